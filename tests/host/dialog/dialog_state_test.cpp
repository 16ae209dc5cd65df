#include "host/dialog/dialog_state.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

using enum DialogState;

struct Row {
  DialogState state;
  bool printCanBePressed;
  bool contentCanBeChanged;
  bool printerIsFollowed;
  bool printWaits;
  DialogState oncePrintIsPressed;
  DialogState oncePrintIsGivenUp;
};

class ADialogState : public testing::TestWithParam<Row> {};

TEST_P(ADialogState, SaysWhatIsLive) {
  const auto& row = GetParam();
  EXPECT_EQ(liveIn(row.state),
            (Live{row.printCanBePressed, row.contentCanBeChanged, row.printerIsFollowed, row.printWaits}));
}

TEST_P(ADialogState, ChangesWithAPressOfPrint) {
  EXPECT_EQ(withPrint(GetParam().state), GetParam().oncePrintIsPressed);
  EXPECT_EQ(withoutPrint(GetParam().state), GetParam().oncePrintIsGivenUp);
}

INSTANTIATE_TEST_SUITE_P(
    Dialog, ADialogState,
    testing::Values(Row{starting, true, true, false, false, startingToPrint, starting},
                    Row{startingToPrint, false, true, false, true, startingToPrint, starting},
                    Row{selecting, true, true, false, false, selectingToPrint, selecting},
                    Row{selectingToPrint, false, true, false, true, selectingToPrint, selecting},
                    Row{reading, true, true, true, false, readingToPrint, reading},
                    Row{readingToPrint, false, true, true, true, readingToPrint, reading},
                    Row{ready, true, true, true, false, ready, ready},
                    Row{chosen, false, true, false, false, chosen, chosen},
                    Row{sending, false, false, false, false, sending, sending},
                    Row{cancelling, false, false, false, false, cancelling, cancelling}));

}  // namespace
}  // namespace tandemtrim::host
