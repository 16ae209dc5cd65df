#include "host/dialog/dialog_state.hpp"

#include <algorithm>
#include <array>

namespace tandemtrim::host {
namespace {

using enum DialogState;

struct Row {
  DialogState state;
  Live live;
  DialogState withPrint;
  DialogState withoutPrint;
};

// print, content, followsPrinter, printWaits
constexpr std::array<Row, 10> kRows{{
    {starting, {true, true, false, false}, startingToPrint, starting},
    {startingToPrint, {false, true, false, true}, startingToPrint, starting},
    {selecting, {true, true, false, false}, selectingToPrint, selecting},
    {selectingToPrint, {false, true, false, true}, selectingToPrint, selecting},
    {reading, {true, true, true, false}, readingToPrint, reading},
    {readingToPrint, {false, true, true, true}, readingToPrint, reading},
    {ready, {true, true, true, false}, ready, ready},
    {chosen, {false, true, false, false}, chosen, chosen},
    {sending, {false, false, false, false}, sending, sending},
    {cancelling, {false, false, false, false}, cancelling, cancelling},
}};

const Row& rowOf(DialogState state) { return *std::ranges::find(kRows, state, &Row::state); }

}  // namespace

Live liveIn(DialogState state) { return rowOf(state).live; }

DialogState withPrint(DialogState state) { return rowOf(state).withPrint; }

DialogState withoutPrint(DialogState state) { return rowOf(state).withoutPrint; }

}  // namespace tandemtrim::host
