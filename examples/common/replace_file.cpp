#include "replace_file.hpp"

#include <unistd.h>

#include <filesystem>
#include <stdexcept>

void replaceFile(const std::string& path, const std::function<void(const std::string& part)>& write) {
  namespace fs = std::filesystem;
  if (fs::exists(path) && !fs::is_regular_file(path)) {
    throw std::runtime_error("cannot write " + path + ": not a regular file");
  }
  const std::string part = path + "." + std::to_string(getpid()) + ".part";
  try {
    write(part);
    std::error_code error;
    fs::rename(part, path, error);
    if (error) {
      throw std::runtime_error("cannot write " + path + ": " + error.message());
    }
  } catch (...) {
    std::error_code ignored;
    fs::remove(part, ignored);
    throw;
  }
}
