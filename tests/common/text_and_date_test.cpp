#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "common/date_time.h"
#include "common/neutral_text.h"
#include "common/replace_first.h"
#include "common/split_by_pattern.h"
#include "support/number_raised_by.h"

namespace veltrix {
namespace {

TEST(DateTime, EverySecondOfOddDaysSurvives) {
    for (const double day : {45351.0, 45291.0, 2958465.0, -657434.0}) {
        for (int second = 0; second < 86400; ++second) {
            const CalendarParts parts = CalendarOf(day + second / SecondsPerDay);
            ASSERT_EQ(parts.hour * 3600 + parts.minute * 60 + parts.second, second) << day;
            ASSERT_NEAR(DateTimeOf(parts), day + second / SecondsPerDay, 1e-9);
        }
    }
}

TEST(DateTime, KnownDaysFloatsBesideASecondAndDatesThatNoCalendarHas) {
    const DateTime midnight = DateTimeOf({2024, 3, 1, 0, 0, 0, 0});
    EXPECT_EQ(GeneralDate(midnight - 0.0004 / SecondsPerDay), "2024/03/01 00:00:00");
    EXPECT_EQ(GeneralDate(midnight - 0.0006 / SecondsPerDay), "2024/02/29 23:59:59");
    EXPECT_EQ(GeneralDate(midnight + 0.999 / SecondsPerDay), "2024/03/01 00:00:00") << "no clock runs ahead";
    EXPECT_EQ(midnight - UnixEpoch, 19783);
    EXPECT_EQ(CalendarOf(midnight).weekday, 5);
    EXPECT_EQ(GeneralDate(-0.25), "1899/12/29 18:00:00");
    for (const double late : {2958466.0, 1e300, HUGE_VAL})
        EXPECT_EQ(GeneralDate(late), "9999/12/31 23:59:59");
    for (const double early : {-657434.1, -1e300, -HUGE_VAL, std::nan("")})
        EXPECT_EQ(GeneralDate(early), "0100/01/01 00:00:00");
}

TEST(FormatDate, MinutesStandBehindHoursOnly) {
    const DateTime date = DateTimeOf({2024, 6, 5, 7, 8, 9, 0});
    EXPECT_EQ(FormatDate(date, "YYYYMMDD HHMM MM SS.MM Y M D"), "20240605 0708 06 09.06 Y M D");
    EXPECT_EQ(FormatDate(date, "MM/DD HH:MM:SS"), "06/05 07:08:09");
}

TEST(ValNeutral, ReadsTheNumberAtTheStart) {
    constexpr double Largest = std::numeric_limits<double>::max();
    const std::pair<double, std::vector<std::string>> cases[] = {
        {0, {"", "abc12", "-", "+-5", "--5", "inf", "nan", "-inf", "0x10", ".", "-.", "\xC2\xB0", "1e-400"}},
        {0, {"0." + std::string(400, '0') + "1"}},
        {12.5,
         {"12,5", "12.5", "  12.5", "\t+12.5", "0012.5", "12.5.3", "12,5,3", "12.5abc", "12.5\n", "12.5 2"}},
        {-0.5, {"-.5", "-0.5", "-5e-1", "-0,05E+1x", "-.5e", "-.5e+"}},
        {Largest, {"1e400", std::string(400, '9') + "e-10"}},
        {-Largest, {"-1e400"}}};
    for (const auto& [value, texts] : cases)
        for (const std::string& text : texts) EXPECT_EQ(ValNeutral(text), value) << text;
}

TEST(FormatNeutral, MasksAndRoundingHalfAwayFromZero) {
    const double none = std::nan("");
    const std::tuple<const char*, std::vector<double>, const char*> cases[] = {
        {"0", {7, 0, 1e15, 0.5, 1.5, 2.5, -2.5, HUGE_VAL}, "7|0|1000000000000000|1|2|3|-3|0|"},
        {"000", {-7, 1234, none}, "-007|1234|000|"},
        {"#", {0, 3}, "|3|"},
        {"00.0", {5.25, 99.95, none}, "05.3|100.0|00.0|"},
        {"0.0", {0.05, 0.04, 0.049999, 0.004}, "0.1|0.0|0.0|0.0|"},
        {"0.00", {1.005, 2.675, -2.675, 9.995}, "1.01|2.68|-2.68|10.00|"},
        {"000.00000", {5.12345, -179.99999, 999.999999}, "005.12345|-179.99999|1000.00000|"},
        {"0.00000", {1e-300, 0.000005}, "0.00000|0.00001|"},
        {"##0.0", {5, 0, 123.45}, "5.0|0.0|123.5|"},
        {"0.##", {12.5}, "12.5|"},
        {"#.0", {0.5, 0.95}, ".5|1.0|"},
        {"0.00 mS", {1.5, -1.5}, "1.50 mS|-1.50 mS|"},
        {"a 0 b", {3}, "a 3 b|"},
        {"0,0", {1.5}, "2.0|"}};
    for (const auto& [mask, values, expected] : cases) {
        std::string texts;
        for (const double value : values) texts += FormatNeutral(value, mask) + "|";
        EXPECT_EQ(texts, expected) << mask;
    }
}

TEST(GeneralNumber, IsPlainInTheUsualRangeAndReadsBack) {
    for (const char* const text : {"0", "0.1", "-1234567.5", "0.00001", "100000000000000", "1e+20"})
        EXPECT_EQ(GeneralNumber(ValNeutral(text)), text);
    EXPECT_EQ(GeneralNumber(-0.0), "0");
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> values(-1e6, 1e6);
    for (int i = 0; i < 2000; ++i) {
        const double value = values(random);
        EXPECT_NEAR(ValNeutral(FormatNeutral(value, "000.000")), value, 0.0005000001);
        EXPECT_EQ(ValNeutral(GeneralNumber(value)), value);
    }
}

TEST(Stamps, AForeignComputersSeparatorsAreReplaced) {
    for (std::string text : {"2008-06-21 14.03.09", "2008/06/21 14:03:09", "2008x06x21 14x03x09"}) {
        EXPECT_EQ(GeneralDate(ParseStamp(text)), "2008/06/21 14:03:09");
        EXPECT_EQ(text, "2008/06/21 14:03:09");
    }
    std::string dateAlone = "2008-6-1", noSeconds = "2008/06/01 7:05";
    EXPECT_EQ(GeneralDate(ParseStamp(dateAlone)), "2008/06/01 00:00:00");
    EXPECT_EQ(GeneralDate(ParseStamp(noSeconds)), "2008/06/01 07:05:00");
    std::string shorter = "2008-06-2";
    FixStampSeparators(shorter);
    EXPECT_EQ(shorter, "2008/06/2");
}

TEST(Stamps, WhatIsNoDateTimeRaises) {
    for (std::string stamp :
         {"", "hello", "2008/06/21 14:03:0x", "2007/02/29 00:00:00", "1900/02/29 00:00:00",
          "2008/13/01 00:00:00", "2008/00/01 00:00:00", "2008/06/21 24:00:00", "2008/06/21 23:60:00",
          "2008/06/21 23:59:60", "0099/01/01 00:00:00", "2008/06", "2008/06/21 14:03:09 ",
          "#O2008/06/21 14:03:09", "20080621"})
        EXPECT_EQ(NumberRaisedBy([&] { ParseStamp(stamp); }), errors::TypeMismatch) << stamp;
}

TEST(SplitByPattern, Fields) {
    using Case = std::array<std::string, 3>;
    for (const auto& [text, pattern, expected] :
         {Case{"a,b,c,d,e", "*,*,*", "a|b|c,d,e"}, Case{",b,c", "*,*,*", "b|c"},
          Case{"a,,c", "*,*,*", "a||c"}, Case{"a,b,", "*,*,*", "a|b"}, Case{"a,b", "*,*,*", "no match"},
          Case{"", "*,*", "no match"}, Case{",", "*,*", ""}, Case{"xabcy", "abc*", "y"},
          Case{"xabcy", "*abc", "x"}, Case{"#O1 Connected to V", "#O* Connected*", "1| to V"},
          Case{"ab ab cd", "*ab cd", "ab "}}) {
        const PatternFields fields = SplitByPattern(text, pattern);
        std::string joined;
        for (const std::string& field : fields.field) joined += field + "|";
        joined.erase(joined.find_last_not_of('|') + 1);
        EXPECT_EQ(fields.matched ? joined : "no match", expected) << text << " by " << pattern;
    }
}

TEST(ReplaceFirst, TouchesTheFirstPlaceOnly) {
    EXPECT_EQ(ReplaceFirst("Station NAME name", "name", "x"), "Station x name");
    EXPECT_EQ(ReplaceFirst("abc", "", "x"), "abc");
    EXPECT_EQ(ReplaceFirst("," + std::string(5000, 'y'), ",", ""), std::string(4096, 'y'));
}

}  // namespace
}  // namespace veltrix
