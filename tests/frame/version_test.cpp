#include "tfmgen.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(Version, RecordHasTheFixedValues) {
  const TfmLibVersion* const version = tfmgenGetLibVersion();
  ASSERT_NE(version, nullptr);
  EXPECT_EQ(version, tfmgenGetLibVersion());
  EXPECT_EQ(version->major, 6);
  EXPECT_EQ(version->minor, 1);
  EXPECT_EQ(version->majorBuild, 137);
  EXPECT_EQ(version->build, 300);
  EXPECT_EQ(std::memcmp(version->target, "u8\0", 4), 0);
  EXPECT_STREQ(version->name, "tfmgenu8-6.1.dll");
  EXPECT_STREQ(version->version, "6.1 build 137.20");
  EXPECT_STREQ(version->buildDate, "Jun 10 2009");
}
