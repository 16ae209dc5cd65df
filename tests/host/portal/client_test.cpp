#include "host/portal/client.hpp"

#include <gtest/gtest.h>

namespace tandemtrim::host {
namespace {

const std::string kRequests = "/org/freedesktop/portal/desktop/request/";

TEST(AHandleOfAPortal, NamesTheProgram) {
  EXPECT_EQ(programOf(kRequests + "1_23/token"), ":1.23");
  EXPECT_EQ(programOf(kRequests + "12_3"), ":12.3");
  EXPECT_EQ(programOf(kRequests + "1_4567890/token/more"), ":1.4567890");
}

TEST(AnyOtherHandle, NamesNoProgram) {
  for (const std::string place : {"/", "/request/", "/org/freedesktop/portal/desktop/session/"})
    EXPECT_EQ(programOf(place + "1_23/token"), "") << place;
  for (const std::string name : {"", "1", "1/23", "_", "1_", "_23", "1_2_3", "a_23", "1_b", "test/1"})
    EXPECT_EQ(programOf(kRequests + name), "") << name;
}

}  // namespace
}  // namespace tandemtrim::host
