#include "host/cups/sent_job.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

TEST(AJobsText, TellsHowManyOptionsTheServerHolds) {
  EXPECT_EQ(jobText({17, "Morva", 7, std::vector<std::string>{}}),
            "job 17 on Morva: 7 of 7 options confirmed");
  EXPECT_EQ(jobText({17, "Morva", 7, std::vector<std::string>{"a", "b"}}),
            "job 17 on Morva: 5 of 7 options confirmed; lost: a, b");
  EXPECT_THAT(jobText({17, "Morva", 7, std::nullopt}), testing::HasSubstr("could not be confirmed"));
}

}  // namespace
}  // namespace tandemtrim::host
