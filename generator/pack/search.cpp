#include "search.hpp"

#include "cost.hpp"

#include <algorithm>
#include <bit>
#include <random>

namespace tfmgen::pack {

namespace {

// Choices out of the raw words of a generator whose sequence the language standard fixes.
class Dice {
public:
  explicit Dice(std::uint64_t seed) : words_(seed) {}

  int below(int count) { return static_cast<int>((words_() >> 32U) * static_cast<std::uint64_t>(count) >> 32U); }
  bool oneIn(int count) { return below(count) == 0; }

  template <class T>
  const T& of(const Indexed<T>& items) {
    return items[below(items.size())];
  }
  template <class T>
  const T& of(const std::vector<T>& items) {
    return items[static_cast<std::size_t>(below(static_cast<int>(items.size())))];
  }

  // -log2(u) of a number u from 0 to 1, in 1/1024, linear between the powers of two: the rise in cost that annealing
  // bears at temperature 1/ln 2.
  int exponential() {
    const auto u = static_cast<std::uint32_t>(words_() >> 32U) | 1U;
    const int zeros = std::countl_zero(u);
    const auto fraction = static_cast<int>(u << static_cast<unsigned>(zeros) >> 21U) - 1024;
    return (zeros + 1) * 1024 - fraction;
  }

private:
  std::mt19937_64 words_;
};

// The contents of two slots change places.
struct Exchange {
  Place a;
  Place b;
};

// Numbers without repetition, forgotten at once.
class Marks {
public:
  explicit Marks(int size) : stamps_(size) {}

  void clear() {
    ++stamp_;
    items_.clear();
  }
  void add(int item) {
    if (stamps_[item] != stamp_) {
      stamps_[item] = stamp_;
      items_.push_back(item);
    }
  }
  [[nodiscard]] bool has(int item) const { return stamps_[item] == stamp_; }
  [[nodiscard]] const std::vector<int>& items() const { return items_; }

private:
  Indexed<int> stamps_;
  int stamp_ = 1;
  std::vector<int> items_;
};

class Search {
public:
  Search(Packing& packing, const Program& program, const Dependences& dependences, const Machine& machine,
         const SearchOptions& options)
      : packing_(packing), program_(program), dependences_(dependences), options_(options), dice_(options.seed),
        cost_(program, dependences, packing, machine), ofLevel_(dependences.levels),
        loadOf_(program.sourceLength + packing.lanes, kEmpty),
        outputs_(program.destinationLength + packing.lanes, kEmpty), vectors_(packing.vectors.size()),
        stores_((program.destinationLength + packing.lanes - 1) / packing.lanes), seen_(program.valueCount()) {
    for (int value = 0; value < program.loads.size(); ++value) {
      loadOf_[program.loads[value]] = value;
    }
    for (const Output& output : program.outputs) {
      outputs_[output.element] = output.value;
    }
    for (int v = 0; v < packing.vectors.size(); ++v) {
      ofLevel_[packing.vectors[v].level].push(v);
    }
  }

  Score run() {
    path_ = cost_.path();
    cost_.keepPath();
    const std::vector<int> row = temperatures(options_);
    const int movesEach = options_.moves / static_cast<int>(row.size());
    for (const int temperature : row) {
      for (int move = 0; move < movesEach; ++move) {
        propose();
        if (!exchanges_.empty() || !flips_.empty()) {
          tryChange(temperature);
        }
      }
    }
    const int work = cost_.work();
    cost_.path();
    return {work, cost_.longestPath()};
  }

private:
  // ---- The change under trial

  void propose() {
    exchanges_.clear();
    flips_.clear();
    vectors_.clear();
    stores_.clear();
    const int kind = dice_.below(100);
    if (kind < 60) {
      moveOne();
    } else if (kind < 75) {
      exchangeLanes();
    } else {
      exchangeOperands();
    }
  }

  // A geometric row, each temperature for as many moves, and the last part without any. In 1/1024 of the unit of costs.
  static std::vector<int> temperatures(const SearchOptions& options) {
    std::vector<int> row;
    for (int t = options.firstTemperature * 1024; t > options.lastTemperature * 1024; t = t / 16 * 15) {
      row.push_back(t);
    }
    row.push_back(0);
    return row;
  }

  void tryChange(int temperature) {
    constexpr int kMostFromPath = 150; // hardly a change shortens the path by more
    // ln 2 = 710 / 1024
    const auto bearable =
        static_cast<int>(static_cast<std::int64_t>(temperature) * dice_.exponential() / 1024 * 710 >> 20);
    const int before = cost_.work();
    cost_.begin(vectors_.items(), stores_.items());
    apply();
    if (cost_.count(vectors_.items(), stores_.items(), before + bearable + kMostFromPath)) {
      const int path = cost_.path(vectors_.items());
      if (cost_.work() - before + path - path_ <= bearable) {
        path_ = path;
        cost_.keepPath();
        return;
      }
    }
    revert();
    cost_.takeBack(vectors_.items(), stores_.items());
  }

  void exchange(const Exchange& e) {
    const int a = packing_.vectors[e.a.vector].at(e.a.lane);
    const int b = packing_.vectors[e.b.vector].at(e.b.lane);
    packing_.put(b, e.a);
    packing_.put(a, e.b);
  }

  void apply() {
    std::ranges::for_each(exchanges_, [this](const Exchange& e) { exchange(e); });
    flip();
  }

  void revert() {
    std::for_each(exchanges_.rbegin(), exchanges_.rend(), [this](const Exchange& e) { exchange(e); });
    flip();
  }

  void flip() {
    for (const int value : flips_) {
      packing_.isExchanged[value] ^= 1;
    }
  }

  // What the place of an operation matters to: its vector, its users and the stores.
  void touch(int value) {
    if (value == kEmpty) {
      return;
    }
    vectors_.add(packing_.places[value].vector);
    for (const int user : dependences_.users[value]) {
      vectors_.add(packing_.places[user].vector);
    }
    for (const int element : dependences_.outputs[value]) {
      stores_.add(element / packing_.lanes);
    }
  }

  void addExchange(Place a, Place b) {
    touch(at(a));
    touch(at(b));
    vectors_.add(a.vector);
    vectors_.add(b.vector);
    exchanges_.push_back({a, b});
  }

  // ---- Moves

  [[nodiscard]] int at(Place place) const { return packing_.vectors[place.vector].at(place.lane); }
  [[nodiscard]] int levelOf(int value) const { return packing_.level(value); }
  [[nodiscard]] int laneOf(int value) const {
    return program_.isLoad(value) ? program_.loads[value] % packing_.lanes : packing_.places[value].lane;
  }
  int anyOperation() { return program_.loads.size() + dice_.below(program_.operations.size()); }

  // Whether an operation can stand in a level between its operands and its users.
  [[nodiscard]] bool fits(int value, int level) const {
    if (value == kEmpty) {
      return true;
    }
    const auto isBelow = [&](const Term& term) { return levelOf(term.value) < level; };
    const auto isAbove = [&](int user) { return levelOf(user) > level; };
    return std::ranges::all_of(program_.operation(value).terms, isBelow) &&
           std::ranges::all_of(dependences_.users[value], isAbove);
  }

  // One operation to another slot. Whatever is there comes back in its place, and often the twins of both do the same.
  void moveOne() {
    const int value = anyOperation();
    const Place to = target(value);
    if (to.vector == kEmpty) {
      return;
    }
    const int level = packing_.vectors[to.vector].level;
    if (level != levelOf(value) && !fits(value, level)) {
      return;
    }
    const int other = at(to);
    if (other == value || (level != levelOf(value) && !fits(other, levelOf(value)))) {
      return;
    }
    const int twin = dependences_.twin[value];
    const bool takesTwin = twin != kEmpty && level == levelOf(value) && levelOf(twin) == level && dice_.oneIn(2);
    addExchange(packing_.places[value], to);
    if (!takesTwin) {
      return;
    }
    if (other == kEmpty) {
      const Place twinTo{dice_.of(ofLevel_[level]), to.lane};
      if (twinTo.vector != to.vector && at(twinTo) == kEmpty) {
        addExchange(packing_.places[twin], twinTo);
      }
    } else if (const int otherTwin = dependences_.twin[other]; otherTwin != kEmpty && twin != other &&
                                                               otherTwin != value && twin != otherTwin &&
                                                               levelOf(otherTwin) == level) {
      addExchange(packing_.places[twin], packing_.places[otherTwin]);
    }
  }

  // A slot where an operation might cost less.
  Place target(int value) {
    const int kind = dice_.below(8);
    if (kind < 3) {
      return besideOperand(value);
    }
    if (kind < 6) {
      return besideUser(value);
    }
    const int level = levelOf(value) + (dice_.oneIn(4) ? 2 * dice_.below(2) - 1 : 0);
    if (level < 0 || level >= dependences_.levels) {
      return {};
    }
    return {dice_.of(ofLevel_[level]), dice_.below(packing_.lanes)};
  }

  // In the lane of an operand, in a vector that has an operand from the same register already.
  Place besideOperand(int value) {
    const auto& terms = program_.operation(value).terms;
    const int operand = dice_.of(terms).value;
    const int neighbour = inRegisterOf(operand);
    if (neighbour == kEmpty || dependences_.users[neighbour].empty()) {
      return {};
    }
    return {packing_.places[dice_.of(dependences_.users[neighbour])].vector, laneOf(operand)};
  }

  // In the lane of a user, in a vector that has another operand of that user's vector.
  Place besideUser(int value) {
    if (dependences_.users[value].empty()) {
      return besideStore(value);
    }
    const Place user = packing_.places[dice_.of(dependences_.users[value])];
    const int neighbour = at({user.vector, dice_.below(packing_.lanes)});
    if (neighbour == kEmpty) {
      return {};
    }
    const int operand = dice_.of(program_.operation(neighbour).terms).value;
    return {packing_.places[operand].vector, user.lane}; // a load has none
  }

  // The same where the user is a store.
  Place besideStore(int value) {
    const int element = dependences_.outputs[value][0];
    const int neighbour = outputs_[element / packing_.lanes * packing_.lanes + dice_.below(packing_.lanes)];
    if (neighbour == kEmpty || program_.isLoad(neighbour)) {
      return {};
    }
    return {packing_.places[neighbour].vector, element % packing_.lanes};
  }

  // Some value that lies in the same vector, or in the same stretch of the source.
  int inRegisterOf(int value) {
    const int lane = dice_.below(packing_.lanes);
    if (!program_.isLoad(value)) {
      return at({packing_.places[value].vector, lane});
    }
    return loadOf_[program_.loads[value] / packing_.lanes * packing_.lanes + lane];
  }

  // Two lanes change places in a set of vectors that are operands and users of each other.
  void exchangeLanes() {
    const int i = dice_.below(packing_.lanes);
    const int j = dice_.below(packing_.lanes);
    if (i == j) {
      return;
    }
    const std::size_t limit = 1 + static_cast<std::size_t>(dice_.below(4));
    const int reach = dice_.below(64);
    seen_.clear(); // vectors here: there are fewer than values
    const auto visit = [&](int vector) {
      if (vector != kEmpty && dice_.below(64) < reach) {
        seen_.add(vector);
      }
    };
    seen_.add(dice_.below(packing_.vectors.size()));
    for (std::size_t next = 0; next < seen_.items().size() && seen_.items().size() < limit; ++next) {
      for (const int lane : {i, j}) {
        const int value = at({seen_.items()[next], lane});
        if (value == kEmpty) {
          continue;
        }
        for (const Term& term : program_.operation(value).terms) {
          visit(packing_.places[term.value].vector);
        }
        for (const int user : dependences_.users[value]) {
          visit(packing_.places[user].vector);
        }
      }
    }
    for (const int vector : seen_.items()) {
      if (at({vector, i}) != kEmpty || at({vector, j}) != kEmpty) {
        addExchange({vector, i}, {vector, j});
      }
    }
  }

  // The two terms of a sum change places, in one operation or in several of its vector.
  void exchangeOperands() {
    const int value = anyOperation();
    if (!isCommutative(program_, value)) {
      return;
    }
    const int vector = packing_.places[value].vector;
    vectors_.add(vector);
    if (dice_.oneIn(2)) {
      flips_.push_back(value);
      return;
    }
    for (int lane = 0; lane < packing_.lanes; ++lane) {
      const int other = at({vector, lane});
      if (other != kEmpty && isCommutative(program_, other) && dice_.oneIn(2)) {
        flips_.push_back(other);
      }
    }
  }

  Packing& packing_;
  const Program& program_;
  const Dependences& dependences_;
  SearchOptions options_;
  Dice dice_;
  Cost cost_;
  int path_ = 0;
  Indexed<Indexed<int>> ofLevel_; // vectors
  Indexed<int> loadOf_;           // by element of the source
  Indexed<int> outputs_;          // by element of the destination
  std::vector<Exchange> exchanges_;
  std::vector<int> flips_;
  Marks vectors_; // whose cost changes
  Marks stores_;
  Marks seen_;
};

} // namespace

Score search(Packing& packing, const Program& program, const Dependences& dependences, const Machine& machine,
             const SearchOptions& options) {
  return Search(packing, program, dependences, machine, options).run();
}

} // namespace tfmgen::pack
