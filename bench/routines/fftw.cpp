#include "fftw_api.hpp"
#include "routine.hpp"

namespace bench {

namespace {

struct Rigor {
  const char* suffix;
  unsigned flag;
};

// From the least to the most planning: a plan once found is used again by those that search less.
constexpr std::array kRigors{Rigor{"-est", FFTW_ESTIMATE}, Rigor{"-meas", FFTW_MEASURE}, Rigor{"-pat", FFTW_PATIENT}};

template <class T>
class Planner {
public:
  Planner(int n, const Arrays<T>& arrays, std::vector<Routine>& routines)
      : n_(n), src_(arrays.src()), dst_(arrays.dst()), routines_(&routines) {}

  void addComplex(int sign) {
    addPlans("fftw", Layout::complex, Layout::complex, [this, sign](unsigned flags) {
      return Api::complexPlan(n_, asComplex(src_), asComplex(dst_), sign, flags);
    });
  }

  void addRealToComplex() {
    addPlans("fftw-r2c", Layout::real, Layout::ccs,
             [this](unsigned flags) { return Api::realToComplexPlan(n_, src_, asComplex(dst_), flags); });
  }

  void addComplexToReal() {
    addPlans("fftw-c2r", Layout::ccs, Layout::real,
             [this](unsigned flags) { return Api::complexToRealPlan(n_, asComplex(src_), dst_, flags); });
  }

  void addRealToReal(const char* name, Layout in, Layout out, fftw_r2r_kind kind) {
    addPlans(name, in, out, [this, kind](unsigned flags) { return Api::realToRealPlan(n_, src_, dst_, kind, flags); });
  }

  // The Hartley transform as users of r2c write it: a real transform, then re - im and re + im of each bin.
  void addHartleyByRealToComplex() {
    for (const Rigor& rigor : kRigors) {
      const auto half = std::make_shared<std::array<T, Arrays<T>::kSize>>();
      const Plan plan = owned(Api::realToComplexPlan(n_, src_, asComplex(half->data()), rigor.flag | FFTW_UNALIGNED));
      const auto call = [plan, half, n = static_cast<std::size_t>(n_), dst = dst_] {
        Api::execute(plan.get());
        const T* bins = half->data();
        dst[0] = bins[0];
        for (std::size_t k = 1; 2 * k <= n; ++k) {
          dst[k] = bins[2 * k] - bins[2 * k + 1];
          dst[n - k] = bins[2 * k] + bins[2 * k + 1];
        }
      };
      add(std::string("fftw-r2c+loop") + rigor.suffix, Layout::real, Layout::real, call);
    }
  }

private:
  using Api = Fftw<T>;
  using Plan = std::shared_ptr<typename Api::Plan>;

  static auto* asComplex(T* array) { return reinterpret_cast<typename Api::Complex*>(array); }
  static Plan owned(typename Api::Plan* plan) { return Plan(plan, Api::destroy); }

  template <class Make>
  void addPlans(const std::string& name, Layout in, Layout out, Make make) {
    for (const Rigor& rigor : kRigors) {
      const Plan plan = owned(make(rigor.flag));
      add(name + rigor.suffix, in, out, [plan] { Api::execute(plan.get()); });
    }
  }

  template <class Call>
  void add(const std::string& name, Layout in, Layout out, Call call) {
    routines_->push_back({name, "fftw", in, out, backToBack(call)});
  }

  int n_;
  T* src_;
  T* dst_;
  std::vector<Routine>* routines_;
};

} // namespace

template <class T>
void addFftw(Family family, int n, const Arrays<T>& arrays, std::vector<Routine>& routines) {
  Fftw<T>::forgetWisdom();
  Planner<T> planner(n, arrays, routines);
  switch (family) {
  case Family::complexForward: return planner.addComplex(FFTW_FORWARD);
  case Family::complexInverse: return planner.addComplex(FFTW_BACKWARD);
  case Family::realForward:
    planner.addRealToComplex();
    return planner.addRealToReal("fftw-r2hc", Layout::real, Layout::halfComplex, FFTW_R2HC);
  case Family::realInverse:
    planner.addComplexToReal();
    return planner.addRealToReal("fftw-hc2r", Layout::halfComplex, Layout::real, FFTW_HC2R);
  case Family::hartley:
    planner.addRealToReal("fftw-dht", Layout::real, Layout::real, FFTW_DHT);
    return planner.addHartleyByRealToComplex();
  }
}

template void addFftw(Family, int, const Arrays<float>&, std::vector<Routine>&);
template void addFftw(Family, int, const Arrays<double>&, std::vector<Routine>&);

} // namespace bench
