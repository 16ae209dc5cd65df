#include <algorithm>
#include <array>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <gtk/gtkunixprint.h>

#include "tests/adapters/gtk/shown_panel.hpp"
#include "view/view_names.hpp"

namespace tandemtrim::test {
namespace {

// The edges of a widget in its reading direction.
struct Edges {
  float leading, trailing, top, bottom;
};

Edges edgesIn(GtkWidget* outer, GtkWidget* widget) {
  graphene_rect_t bounds{};
  EXPECT_TRUE(gtk_widget_compute_bounds(widget, outer, &bounds)) << G_OBJECT_TYPE_NAME(widget);
  const auto& [x, y] = bounds.origin;
  const auto& [width, height] = bounds.size;
  const bool isMirrored = gtk_widget_get_direction(widget) == GTK_TEXT_DIR_RTL;
  const auto leading = isMirrored ? static_cast<float>(gtk_widget_get_width(outer)) - x - width : x;
  return {.leading = leading, .trailing = leading + width, .top = y, .bottom = y + height};
}

float leadingEdge(ShownPanel& shown, const std::string& name) {
  return edgesIn(shown.window(), shown.widget(name)).leading;
}
float trailingEdge(ShownPanel& shown, const std::string& name) {
  return edgesIn(shown.window(), shown.widget(name)).trailing;
}

// The measures of a form. They are equal in forms that look alike.
struct Form {
  std::array<float, 4> toTheEdgesOfThePage{};
  std::size_t labelsBeginAt = 0;
  float fromLabelToControl = 0;
  float betweenRows = 0;
};

// Measures a grid on a page of a notebook, with titles in the first column and controls in the second.
Form formOf(GtkWidget* grid) {
  auto* page = grid;
  while (GTK_IS_STACK(gtk_widget_get_parent(page)) == FALSE) page = gtk_widget_get_parent(page);
  auto* const stack = gtk_widget_get_parent(page);
  const auto around = edgesIn(stack, page);
  std::set<float> starts;
  std::vector<Edges> controls;
  float labelsEnd = 0;
  for (auto* child = gtk_widget_get_first_child(grid); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    int column = 0;
    gtk_grid_query_child(GTK_GRID(grid), child, &column, nullptr, nullptr, nullptr);
    const auto edges = edgesIn(stack, child);
    if (gtk_widget_get_mapped(child) == FALSE) continue;
    if (column == 0 && GTK_IS_LABEL(child)) {
      starts.insert(edges.leading);
      labelsEnd = std::max(labelsEnd, edges.trailing);
    }
    if (column == 1) controls.push_back(edges);
  }
  std::ranges::sort(controls, {}, &Edges::top);
  EXPECT_GE(controls.size(), 2U);
  const auto width = static_cast<float>(gtk_widget_get_width(stack));
  const auto height = static_cast<float>(gtk_widget_get_height(stack));
  return {
      .toTheEdgesOfThePage = {around.leading, width - around.trailing, around.top, height - around.bottom},
      .labelsBeginAt = starts.size(),
      .fromLabelToControl = controls.at(0).leading - labelsEnd,
      .betweenRows = controls.at(1).top - controls.at(0).bottom};
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
    EXPECT_FLOAT_EQ(leadingEdge(shown, row.at(0)), leadingEdge(shown, "tandemTrimValid")) << row.at(0);
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

TEST_P(LayoutInALanguage, HasTheMarginsAndGapsOfThePrintDialogsOwnPages) {
  ShownPanel shown({.language = GetParam(), .inPrintDialog = true});
  shown.user().awaitFrame();
  const auto own = formOf(shown.root());

  auto* const control = GTK_WIDGET(
      gtk_widget_get_template_child(shown.window(), GTK_TYPE_PRINT_UNIX_DIALOG, "paper_size_combo"));
  auto* const notebook = GTK_NOTEBOOK(gtk_widget_get_ancestor(control, GTK_TYPE_NOTEBOOK));
  gtk_notebook_set_current_page(notebook, 1);
  shown.user().awaitFrame();
  ASSERT_TRUE(gtk_widget_get_mapped(control));
  const auto gtks = formOf(gtk_widget_get_parent(control));

  EXPECT_EQ(own.toTheEdgesOfThePage, gtks.toTheEdgesOfThePage);
  EXPECT_EQ(own.labelsBeginAt, gtks.labelsBeginAt);
  EXPECT_EQ(own.fromLabelToControl, gtks.fromLabelToControl);
  EXPECT_EQ(own.betweenRows, gtks.betweenRows);
}

// In Arabic the panel reads from the right, while the unit is in Latin letters.
TEST(LayoutInArabic, ReadsTheLimitsBesideABoxFromTheRight) {
  ShownPanel shown({.language = "ar"});
  shown.user().awaitFrame();
  auto* const label = GTK_LABEL(shown.widget("labelMarginLimitTop"));
  const std::string text = gtk_label_get_text(label);
  float before = static_cast<float>(gtk_widget_get_width(GTK_WIDGET(label))) * PANGO_SCALE + 1;
  for (const auto* piece : {"mm", "(", "0", "إلى", "20", ")"}) {
    PangoRectangle place{};
    const auto at = text.find(piece);
    ASSERT_NE(at, std::string::npos) << piece;
    pango_layout_index_to_pos(gtk_label_get_layout(label), static_cast<int>(at), &place);
    const auto right = static_cast<float>(std::max(place.x, place.x + place.width));
    EXPECT_LT(right, before) << piece;
    before = right;
  }
}

// The labels include those inside a menu's button.
TEST_P(LayoutInALanguage, ClipsNoTextAtAnySize) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    ShownPanel shown({.language = GetParam(),
                      .textScale = scale,
                      .stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", "777"}, {"MVLeftMargin", "-40"}}});
    shown.user().awaitFrame();
    const auto labels = widgetsOf(shown.root(), GTK_TYPE_LABEL);
    EXPECT_GE(labels.size(), 12U);
    for (auto* const label : labels) {
      if (gtk_widget_get_visible(label) == FALSE) continue;
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
