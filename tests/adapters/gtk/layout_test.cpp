#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/adapters/gtk/shown_panel.hpp"
#include "view/view_names.hpp"

namespace tandemtrim::test {
namespace {

graphene_rect_t boundsIn(ShownPanel& shown, const std::string& name) {
  graphene_rect_t bounds{};
  EXPECT_TRUE(gtk_widget_compute_bounds(shown.widget(name), shown.window(), &bounds)) << name;
  return bounds;
}

// Where a widget begins for a user who reads in the direction of the panel.
float leadingEdge(ShownPanel& shown, const std::string& name) {
  const auto bounds = boundsIn(shown, name);
  const bool mirrored = gtk_widget_get_direction(shown.root()) == GTK_TEXT_DIR_RTL;
  return mirrored
             ? static_cast<float>(gtk_widget_get_width(shown.window())) - bounds.origin.x - bounds.size.width
             : bounds.origin.x;
}
float trailingEdge(ShownPanel& shown, const std::string& name) {
  return leadingEdge(shown, name) + boundsIn(shown, name).size.width;
}

const auto kRows = [] {
  std::vector<std::vector<std::string>> rows{{"labelDirection", "directionPopUp"},
                                             {"labelPosition", "positionPopUp"}};
  for (const auto& margin : kMarginOutlets)
    rows.push_back({std::string(margin.label), std::string(margin.textBox), std::string(margin.limitLabel)});
  return rows;
}();

class LayoutInALanguage : public testing::TestWithParam<const char*> {};

TEST_P(LayoutInALanguage, AlignsLabelsBoxesAndRangesInReadingDirection) {
  ShownPanel shown({.language = GetParam()});
  shown.user().awaitFrame();
  for (const auto& row : kRows) {
    EXPECT_FLOAT_EQ(trailingEdge(shown, row.at(0)), trailingEdge(shown, "labelDirection")) << row.at(0);
    EXPECT_FLOAT_EQ(leadingEdge(shown, row.at(1)), leadingEdge(shown, "directionPopUp")) << row.at(1);
    for (std::size_t column = 1; column < row.size(); ++column)
      EXPECT_GT(leadingEdge(shown, row.at(column)), trailingEdge(shown, row.at(column - 1)))
          << row.at(column);
    if (row.size() > 2) {
      EXPECT_FLOAT_EQ(leadingEdge(shown, row.at(2)), leadingEdge(shown, "labelMarginLimitTop")) << row.at(2);
    }
    EXPECT_GT(leadingEdge(shown, "sheetPicture"), trailingEdge(shown, row.back()));
  }
}

// The control's own label, which may be the part of a menu's button.
TEST_P(LayoutInALanguage, ClipsNoTextAtAnySize) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    ShownPanel shown({.language = GetParam(),
                      .textScale = scale,
                      .stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", "777"}, {"MVLeftMargin", "-40"}}});
    shown.user().awaitFrame();
    const auto labels = widgetsOf(shown.root(), GTK_TYPE_LABEL);
    EXPECT_GE(labels.size(), 12U);
    for (auto* const label : labels) {
      int width = 0;
      int height = 0;
      pango_layout_get_pixel_size(gtk_label_get_layout(GTK_LABEL(label)), &width, &height);
      const auto* const text = gtk_label_get_text(GTK_LABEL(label));
      EXPECT_LE(width, gtk_widget_get_width(label)) << text << " at " << scale;
      EXPECT_LE(height, gtk_widget_get_height(label)) << text << " at " << scale;
      EXPECT_FALSE(pango_layout_is_ellipsized(gtk_label_get_layout(GTK_LABEL(label))))
          << text << " at " << scale;
    }
    for (const std::string box : {"textBoxMarginTop", "textBoxMarginLeft"}) {
      auto* const text = GTK_WIDGET(gtk_editable_get_delegate(GTK_EDITABLE(shown.widget(box))));
      auto* const layout = gtk_widget_create_pango_layout(text, shown.text(box).c_str());
      int width = 0;
      pango_layout_get_pixel_size(layout, &width, nullptr);
      g_object_unref(layout);
      EXPECT_LE(width, gtk_widget_get_width(text)) << shown.text(box) << " at " << scale;
    }
    EXPECT_LE(gtk_widget_get_width(shown.window()), 1280) << scale;
  }
}

TEST_P(LayoutInALanguage, LeavesThePrintDialogNarrow) {
  ShownPanel shown({.language = GetParam(), .inPrintDialog = true});
  shown.user().awaitFrame();
  EXPECT_TRUE(gtk_widget_get_mapped(shown.root()));
  EXPECT_LE(gtk_widget_get_width(shown.window()), 760);
}

INSTANTIATE_TEST_SUITE_P(Languages, LayoutInALanguage, testing::ValuesIn(kLanguages));

}  // namespace
}  // namespace tandemtrim::test
