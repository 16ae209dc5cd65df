#include "host/job/time_of_day.hpp"

#include <gtest/gtest.h>

namespace tandemtrim::host {
namespace {

TEST(ATimeOfDay, IsInHoursAndMinutesAndPerhapsSeconds) {
  for (const char* text : {"0:00", "00:00", "9:05", "19:30", "20:00", "23:59", "23:59:59", "3:15:00"})
    EXPECT_TRUE(isTimeOfDay(text)) << text;
  for (const char* text : {"24:00", "30:00", "12:60", "12:30:60", "12:3", "12", "", "12:30:", "123:00",
                           "-1:00", "12.30", " 12:30", "12:30 ", "12:30:00:00"})
    EXPECT_FALSE(isTimeOfDay(text)) << text;
}

}  // namespace
}  // namespace tandemtrim::host
