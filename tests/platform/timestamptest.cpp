#include "platform/timestamp.h"
#include "support/errortext.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace qmrules::platform {
namespace {

using test::ErrorText;

TEST(Timestamp, FormatsInUtc) {
  EXPECT_EQ(FormatTimestamp({0}), "1970-01-01 00:00:00");
  EXPECT_EQ(FormatTimestamp({1769884200}), "2026-01-31 18:30:00");
}

TEST(Timestamp, FormatsMomentsBefore1970) {
  EXPECT_EQ(FormatTimestamp({-1}), "1969-12-31 23:59:59");
}

TEST(Timestamp, FormatsTheWholeRangeOfYears) {
  EXPECT_EQ(FormatTimestamp({-62167219200}), "0000-01-01 00:00:00");
  EXPECT_EQ(FormatTimestamp({253402300799}), "9999-12-31 23:59:59");
}

TEST(Timestamp, MomentOutsideTheYearsIsRefused) {
  EXPECT_EQ(ErrorText([] { (void)FormatTimestamp({-62167219201}); }),
            "The moment -62167219201 seconds from 1970 lies outside the years 0000 to 9999.");
  EXPECT_EQ(ErrorText([] { (void)FormatTimestamp({253402300800}); }),
            "The moment 253402300800 seconds from 1970 lies outside the years 0000 to 9999.");
}

TEST(Timestamp, FarthestMomentsAreRefusedToo) {
  EXPECT_EQ(ErrorText([] { (void)FormatTimestamp({std::numeric_limits<std::int64_t>::max()}); }),
            "The moment 9223372036854775807 seconds from 1970 lies outside the years 0000 to 9999.");
  EXPECT_EQ(ErrorText([] { (void)FormatTimestamp({std::numeric_limits<std::int64_t>::min()}); }),
            "The moment -9223372036854775808 seconds from 1970 lies outside the years 0000 to 9999.");
  // 146097 days of 65536 cycles of 400 years: where a calendar of 32 bits comes round again.
  EXPECT_EQ(ErrorText([] { (void)FormatTimestamp({(std::int64_t{1} << 32) * 86400}); }),
            "The moment 371085174374400 seconds from 1970 lies outside the years 0000 to 9999.");
}

TEST(Timestamp, ParsesEachForm) {
  EXPECT_EQ(ParseTimestamp("2026-01-31"), Timestamp{1769817600});
  EXPECT_EQ(ParseTimestamp("2026-01-31 18:30"), Timestamp{1769884200});
  EXPECT_EQ(ParseTimestamp("2026-01-31 18:30:05"), Timestamp{1769884205});
  EXPECT_EQ(ParseTimestamp("2026-01-31T18:30:05"), Timestamp{1769884205});
  EXPECT_EQ(ParseTimestamp("2026-01-31T18:30:05Z"), Timestamp{1769884205});
}

TEST(Timestamp, LeapDaysFollowTheCalendar) {
  EXPECT_TRUE(ParseTimestamp("2024-02-29"));
  EXPECT_TRUE(ParseTimestamp("2000-02-29"));
  EXPECT_FALSE(ParseTimestamp("2023-02-29"));
  EXPECT_FALSE(ParseTimestamp("1900-02-29"));
}

TEST(Timestamp, OtherTextsAreNoMoment) {
  for (const auto* text : {"",
                           "x",
                           "2026",
                           "2026-1-31",
                           "26-01-31",
                           "2026-13-01",
                           "2026-00-10",
                           "2026-01-00",
                           "2026-01-32",
                           "2026/01/31",
                           " 2026-01-31",
                           "2026-01-31 ",
                           "2026-01-31 18",
                           "2026-01-31 24:00",
                           "2026-01-31 18:60",
                           "2026-01-31 18:30:60",
                           "2026-01-31 18:30:",
                           "2026-01-31 18:30:5",
                           "2026-01-31  18:30",
                           "2026-01-31 18:30:05 Z",
                           "2026-01-31 18:30:05ZZ",
                           "2026-01-31t18:30",
                           "-026-01-31"}) {
    EXPECT_FALSE(ParseTimestamp(text)) << text;
  }
}

TEST(Timestamp, FormattedMomentIsParsedBack) {
  for (std::int64_t seconds = -62167219200; seconds <= 253402300799; seconds += 1234567891) {
    EXPECT_EQ(ParseTimestamp(FormatTimestamp({seconds})), Timestamp{seconds});
  }
}

TEST(Timestamp, OrderIsThatOfTime) {
  EXPECT_LT(Timestamp{1}, Timestamp{2});
  EXPECT_EQ(Timestamp{2}, Timestamp{2});
}

}  // namespace
}  // namespace qmrules::platform
