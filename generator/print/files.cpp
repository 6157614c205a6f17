#include "files.hpp"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace tfmgen::print {

namespace {

struct File {
  std::string text;
  int weight = 0;
};

} // namespace

void writeFiles(const std::filesystem::path& directory, const std::string& name, std::size_t count,
                const std::string& preamble, std::vector<Piece> pieces) {
  std::vector<File> files(count, File{preamble});
  std::ranges::stable_sort(pieces, std::ranges::greater{}, &Piece::weight);
  for (const Piece& piece : pieces) {
    File& lightest = *std::ranges::min_element(files, {}, &File::weight);
    lightest.text += piece.text;
    lightest.weight += piece.weight;
  }
  std::filesystem::create_directories(directory);
  for (std::size_t i = 0; i < files.size(); ++i) {
    const std::filesystem::path path = directory / (name + "_" + std::to_string(i) + ".cpp");
    std::ofstream out(path, std::ios::binary);
    out << files[i].text;
    if (!out.flush()) {
      throw std::runtime_error("cannot write " + path.string());
    }
  }
}

} // namespace tfmgen::print
