// The library of each level beside the others in one process.
#pragma once

#include <string>
#include <vector>

namespace bench {

// Several mappings of one file, each a copy in memory of this process: a routine may be slow in one mapping and not in
// another, and the least of them is its time.
class LevelLibrary {
public:
  // Throws std::runtime_error when the file cannot be loaded.
  LevelLibrary(std::string level, const std::string& file);

  [[nodiscard]] const std::string& level() const { return level_; }

  [[nodiscard]] bool has(const std::string& name) const;
  // The routine in each mapping. Throws std::runtime_error when the library has none of this name.
  template <class Function>
  [[nodiscard]] std::vector<Function*> find(const std::string& name) const {
    std::vector<Function*> functions;
    for (void* const address : addresses(name)) {
      functions.push_back(reinterpret_cast<Function*>(address));
    }
    return functions;
  }

private:
  [[nodiscard]] std::vector<void*> addresses(const std::string& name) const;

  std::string level_;
  std::vector<void*> mappings_; // never unloaded
};

// The libraries of these levels, "default" for the default library; of all that this processor runs when `levels` is
// empty. Throws std::runtime_error for a level that is not built or that the processor has not.
std::vector<LevelLibrary> levelLibraries(const std::vector<std::string>& levels);

} // namespace bench
