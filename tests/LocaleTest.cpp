#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <string>

#include "Calc.h"

using namespace vantrel;

namespace {

// Qt adopts the desktop's locale at start-up; in a German session printf writes "28,85" and
// strtod stops at the ".". The engine must be untouched by that. The test runs with a locale
// generated into the build tree (LOCPATH), so it does not depend on what the machine has.
class DecimalCommaLocale : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr)
            << "the de_DE.UTF-8 locale is missing; LOCPATH names where it is generated";
        char probe[16];
        std::snprintf(probe, sizeof probe, "%.1f", 2.5);
        ASSERT_EQ(std::string(probe), "2,5") << "the locale does not use a decimal comma";
    }
    void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

TEST_F(DecimalCommaLocale, FormatsWithAPoint) {
    Calc calc;
    EXPECT_EQ(calc.evalPT("1500", DisplayStateFilmLength), "28.85 m");
    EXPECT_EQ(calc.evalPT("7/2", DisplayStateNumber), "4");
    calc.setFps(DisplayState25fps);
    EXPECT_EQ(calc.evalPT("12.5", DisplayStateTime), "00:00:00.13");
}

TEST_F(DecimalCommaLocale, ReadsNumbersWithAPoint) {
    Calc calc;
    EXPECT_EQ(calc.evalPTToFrames("2.5*2"), 5.0);
    EXPECT_EQ(calc.evalPTToFrames("1.25+1"), 2.25);
}

}  // namespace
