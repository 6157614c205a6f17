// Runs the program on small recordings, good and bad ones.
#include "../picture.hpp"

#include <gtest/gtest.h>

#include <png.h>
#include <sndfile.h>
#include <sys/wait.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Outcome {
  int exitCode;
  std::string out;
  std::string err;
};

std::string contents(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

int shell(const std::string& command) {
  const int status = std::system(command.c_str()); // NOLINT(cert-env33-c): the program is run as its users run it
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// A path as one word of a command line.
std::string word(const fs::path& path) {
  std::string text = "'";
  for (const char c : path.string()) {
    text += c == '\'' ? std::string("'\\''") : std::string(1, c);
  }
  return text + "'";
}

class Spectrogram : public testing::Test {
protected:
  void SetUp() override {
    std::string name = (fs::temp_directory_path() / "a spectrogram.XXXXXX").string();
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    directory_ = name;
    fs::create_directory(picture().parent_path());
  }
  void TearDown() override { fs::remove_all(directory_); }

  [[nodiscard]] fs::path recording() const { return directory_ / "recording.wav"; }
  [[nodiscard]] fs::path picture() const { return directory_ / "pictures" / "picture.png"; }

  void writeWav(const std::vector<float>& samples, int channels = 1) const {
    SF_INFO info{};
    info.samplerate = 16000;
    info.channels = channels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* file = sf_open(recording().c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr);
    const auto count = static_cast<sf_count_t>(samples.size());
    ASSERT_EQ(sf_write_float(file, samples.data(), count), count);
    sf_close(file);
  }

  static std::vector<float> tone(double frequency, std::size_t count) {
    std::vector<float> samples(count);
    for (std::size_t i = 0; i < count; ++i) {
      samples[i] = static_cast<float>(std::sin(2 * std::numbers::pi * frequency * static_cast<double>(i) / 16000));
    }
    return samples;
  }

  [[nodiscard]] Outcome run(const std::string& arguments) const {
    const fs::path out = directory_ / "out";
    const fs::path err = directory_ / "err";
    const std::string command = word(SPECTROGRAM) + " " + arguments + " >" + word(out) + " 2>" + word(err);
    const int exitCode = shell(command);
    return {exitCode, contents(out), contents(err)};
  }

  [[nodiscard]] Outcome draw(const std::string& length) const {
    return run(word(recording()) + " " + word(picture()) + " " + length);
  }

  // A clear message, an exit code, and nothing left where the picture would have been.
  void expectFailure(const Outcome& outcome, const std::string& message) const {
    EXPECT_GT(outcome.exitCode, 0);
    EXPECT_NE(outcome.err.find(message), std::string::npos) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(fs::is_empty(picture().parent_path()));
  }

  fs::path directory_;
};

TEST_F(Spectrogram, FindsATone) {
  writeWav(tone(3000, 4000));
  const Outcome outcome = draw("32");
  ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_NE(outcome.out.find("497 frames of length 32"), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("3000.0 Hz (bin 6)"), std::string::npos) << outcome.out;

  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  ASSERT_NE(png_image_begin_read_from_file(&image, picture().c_str()), 0);
  image.format = PNG_FORMAT_GRAY;
  std::vector<png_byte> pixels(PNG_IMAGE_SIZE(image));
  ASSERT_NE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr), 0);
  // 17 bins from bottom to top of the plot: its middle column is brightest within the block of bin 6.
  EXPECT_EQ(image.width, kPicture.width);
  const auto middle = static_cast<std::size_t>(kPlot.x + kPlot.width / 2);
  const auto top = static_cast<std::size_t>(kPlot.y);
  const auto height = static_cast<std::size_t>(kPlot.height);
  const auto at = [&](std::size_t row) { return pixels[(top + row) * image.width + middle]; };
  std::size_t brightest = 0;
  for (std::size_t row = 0; row < height; ++row) {
    brightest = at(row) > at(brightest) ? row : brightest;
  }
  EXPECT_EQ((2 * brightest + 1) * 17 / (2 * height), 16U - 6U); // the middle of a row of pixels
}

TEST_F(Spectrogram, EveryLengthAndShortRecordings) {
  writeWav({0.5F, -0.25F, 0.125F}); // shorter than most frames
  for (int length = 2; length <= 64; ++length) {
    EXPECT_EQ(draw(std::to_string(length)).exitCode, 0) << length;
  }
  writeWav(std::vector<float>(2000, 0.0F), 2); // silence has no strongest pixel to scale by
  EXPECT_EQ(draw("64").exitCode, 0);
}

TEST_F(Spectrogram, RefusesBadArguments) {
  writeWav(tone(1000, 200));
  for (const char* length : {"1", "65", "-4", "0", "2147483647"}) {
    expectFailure(draw(length), "no transform of length " + std::string(length));
  }
  for (const char* length : {"x", "16x", "''", "99999999999"}) {
    expectFailure(draw(length), "not a length");
  }
  expectFailure(run(""), "usage");
  expectFailure(run(word(recording()) + " " + word(recording())), "replace the recording");
}

TEST_F(Spectrogram, RefusesBadRecordings) {
  expectFailure(draw("64"), recording().string());
  std::ofstream(recording()) << "this is no sound";
  expectFailure(draw("64"), recording().string());
  writeWav(tone(1000, 200));
  fs::resize_file(recording(), 30); // ends within the header
  expectFailure(draw("64"), recording().string());
  writeWav({});
  expectFailure(draw("64"), "holds no samples");
  writeWav({0.0F, std::numeric_limits<float>::quiet_NaN()});
  expectFailure(draw("64"), "finite");
}

TEST_F(Spectrogram, UnwritablePicture) {
  writeWav(tone(1000, 200));
  expectFailure(run(word(recording()) + " " + word(picture().parent_path() / "missing/p.png")), "cannot write");
  fs::create_directory(directory_ / "folder");
  expectFailure(run(word(recording()) + " " + word(directory_ / "folder")), "not a regular file");
  // Without room for the new picture the old one stays: a limit of the shell stops the file after a block of 512 bytes.
  std::ofstream(picture()) << "old";
  const std::string limited = "(trap '' XFSZ; ulimit -f 1; exec " + word(SPECTROGRAM) + " " + word(recording()) + " " +
                              word(picture()) + " 2>/dev/null)";
  EXPECT_EQ(shell(limited), 1);
  EXPECT_EQ(contents(picture()), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator(picture().parent_path()), {}), 1);
}

} // namespace
