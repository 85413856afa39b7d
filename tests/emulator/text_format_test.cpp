// Texts made as by printf.
#include "emulator/text_format.h"

#include <gtest/gtest.h>

#include <string>

namespace emulator_test {
namespace {

TEST(TextFormat, WritesWhatPrintfWrites) {
    EXPECT_EQ(emulator::format("op=%d if=0x%08x %s", -2, 0x9B010001U, "end"), "op=-2 if=0x9b010001 end");
    EXPECT_EQ(emulator::format("%s", ""), "");
}

TEST(TextFormat, CutsNoText) {
    const std::string longText(5000, 'x');
    EXPECT_EQ(emulator::format("<%s>", longText.c_str()), "<" + longText + ">");
}

} // namespace
} // namespace emulator_test
