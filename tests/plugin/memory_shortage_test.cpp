#include <array>
#include <functional>
#include <new>

#include "adapters/linux/bundle.hpp"
#include "adapters/linux/print_settings.hpp"
#include "adapters/memory/panel_view.hpp"
#include "plugin/plugin.hpp"
#include "tests/support/core_test.hpp"
#include "tests/support/heap.hpp"

namespace tandemtrim::test {
namespace {

using platform::memory::PanelView;
using Values = std::map<std::string, std::string>;

// A host's job and its panel.
class Session {
 public:
  Session(const std::shared_ptr<platform::Bundle>& bundle, std::shared_ptr<ppd_file_s> ppd,
          const Values& stored)
      : host_(std::make_shared<Host>(std::move(ppd))) {
    for (const auto& [key, value] : stored) host_->settings.PMPrintSettingsSetValue(key, value, false);
    plugin_.initWithBundle(bundle);
  }

  void create() { panels_ = plugin_.PDEPanelsForType(platform::kPrintDialogExtensionType, host_); }
  [[nodiscard]] platform::PrintPanel& panel() const { return *panels_->front(); }
  [[nodiscard]] PanelView& user() const { return dynamic_cast<PanelView&>(*panel().panelView()); }
  [[nodiscard]] bool isCreated() const { return panels_ != nullptr; }
  [[nodiscard]] Values values() const {
    Values values;
    for (const auto& [key, value] : host_->settings.entries()) values[key] = value;
    return values;
  }

 private:
  struct Host : platform::HostCallback {
    explicit Host(std::shared_ptr<ppd_file_s> opened) : ppd(std::move(opened)) {}
    platform::PrintSettings* printSettings() override { return &settings; }
    ppd_file_s* ppdFile() override { return ppd.get(); }
    platform::linux::PrintSettings settings;
    std::shared_ptr<ppd_file_s> ppd;
  };

  std::shared_ptr<Host> host_;
  MorvaTTPdePluginKV2 plugin_;
  std::unique_ptr<platform::PanelList> panels_;
};

// What a host or a user does, in the order of a dialog's life.
struct Step {
  const char* name;
  void (*run)(const Session& session);
};

constexpr std::array<Step, 12> kSteps{{
    {"the view is requested", [](const Session& session) { (void)session.panel().panelView(); }},
    {"the panel is shown", [](const Session& session) { session.panel().willShow(); }},
    {"the check box is clicked", [](const Session& session) { session.user().click("Valid"); }},
    {"a number is typed", [](const Session& session) { session.user().type("Top", "12"); }},
    {"a long text is pasted",
     [](const Session& session) { session.user().type("Left", "1 234 567 890 123 456 789"); }},
    {"an item is chosen", [](const Session& session) { session.user().choose("Direction", 1); }},
    {"a stepper is clicked", [](const Session& session) { session.user().step("stepperMarginRight", -3); }},
    {"the panel saves", [](const Session& session) { session.panel().saveValuesAndReturnError(nullptr); }},
    {"the summary is requested", [](const Session& session) { (void)session.panel().summaryInfo(); }},
    {"the defaults are restored", [](const Session& session) { session.user().click("RestoreDefault"); }},
    {"the panel restores",
     [](const Session& session) { session.panel().restoreValuesAndReturnError(nullptr); }},
    {"the keywords are requested",
     [](const Session& session) { (void)session.panel().supportedPPDOptionKeys(); }},
}};

struct Case {
  const char* name;
  bool forGood;
  Values stored;

  friend std::ostream& operator<<(std::ostream& out, const Case& test) { return out << test.name; }
};

class MemoryShortage : public CoreTest, public testing::WithParamInterface<Case> {
 protected:
  MemoryShortage() {
    std::string reason;
    bundleOnDisk = platform::linux::Bundle::open(scene.writeBundle(), reason, {});
    ppd = FakeCallback(scene).ppd;
    // Before allocations are counted, creates the objects that live as long as the program.
    auto opened = session();
    opened.create();
    for (const auto& step : kSteps) step.run(opened);
    expectAsBeforeOrLegal({}, opened.values());
  }

  [[nodiscard]] Session session() const { return {bundleOnDisk, ppd, GetParam().stored}; }

  // Runs with this many allocations left and returns whether they were enough.
  bool isEnough(long allocations, const std::function<void()>& run) const {
    heap().left = allocations;
    heap().forGood = GetParam().forGood;
    bool raised = false;
    try {
      run();
    } catch (const std::bad_alloc&) {
      raised = true;
    }
    const bool isUsedUp = heap().left < 0;
    heap().left = -1;
    heap().isExhausted = false;
    return !raised && !isUsedUp;
  }

  static bool isLegal(const std::string& key, const std::string& value) {
    static const std::map<std::string, std::vector<std::string>> kChoices{
        {"MVTandemTrim", {"On", "Off"}},
        {"MVImageDirectionPriority", {"LongEdgeFeed", "ShortEdgeFeed"}},
        {"MVPrintPosition", {"Left", "Center", "Right"}}};
    static const std::map<std::string, int> kLimits{
        {"MVTopMargin", 50}, {"MVBottomMargin", 40}, {"MVLeftMargin", 20}, {"MVRightMargin", 10}};
    if (const auto choices = kChoices.find(key); choices != kChoices.end())
      return std::ranges::count(choices->second, value) == 1;
    return value == std::to_string(std::stoi(value)) && std::stoi(value) <= kLimits.at(key);
  }

  static void expectAsBeforeOrLegal(const Values& before, const Values& after) {
    for (const auto& [key, value] : before) EXPECT_TRUE(after.contains(key)) << key << " is gone";
    for (const auto& [key, value] : after) {
      const auto old = before.find(key);
      EXPECT_TRUE((old != before.end() && old->second == value) || isLegal(key, value))
          << key << '=' << value;
    }
  }

  std::shared_ptr<platform::Bundle> bundleOnDisk;
  std::shared_ptr<ppd_file_s> ppd;
};

TEST_P(MemoryShortage, AtAnyAllocationLeavesNoPanelOrAWholeOneAndLeaksNothing) {
  bool enough = false;
  long allocations = 0;
  for (; !enough && !HasFailure(); ++allocations) {
    SCOPED_TRACE("after " + std::to_string(allocations) + " allocations");
    const auto live = heap().live;
    {
      auto opened = session();
      const auto before = opened.values();
      enough = isEnough(allocations, [&] { opened.create(); });
      expectAsBeforeOrLegal(before, opened.values());
      if (!opened.isCreated()) opened.create();
      ASSERT_TRUE(opened.isCreated());
      EXPECT_EQ(opened.values().size(), 7U);
    }
    EXPECT_EQ(heap().live, live);
  }
  EXPECT_GT(allocations, 100);
}

TEST_P(MemoryShortage, AtAnyAllocationOfAStepLeavesLegalSettingsAndLeaksNothing) {
  for (std::size_t step = 0; step < kSteps.size(); ++step) {
    SCOPED_TRACE(kSteps.at(step).name);
    bool enough = false;
    for (long allocations = 0; !enough && !HasFailure(); ++allocations) {
      SCOPED_TRACE("after " + std::to_string(allocations) + " allocations");
      const auto live = heap().live;
      {
        auto opened = session();
        opened.create();
        for (std::size_t earlier = 0; earlier < step; ++earlier) kSteps.at(earlier).run(opened);
        const auto before = opened.values();
        enough = isEnough(allocations, [&] { kSteps.at(step).run(opened); });
        expectAsBeforeOrLegal(before, opened.values());
        // Once there is memory again, the dialog still works and stores only legal values.
        opened.panel().willShow();
        opened.panel().saveValuesAndReturnError(nullptr);
        expectAsBeforeOrLegal(before, opened.values());
        EXPECT_FALSE(opened.panel().summaryInfo().empty());
      }
      EXPECT_EQ(heap().live, live);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    Jobs, MemoryShortage,
    testing::Values(Case{"OnceInANewJob", false, {}}, Case{"FromThereOnInANewJob", true, {}},
                    Case{"OnceInAJobWithSettings",
                         false,
                         {{"MVTandemTrim", "On"}, {"MVTopMargin", "7"}, {"MVRightMargin", "9"}}},
                    Case{"FromThereOnInAJobWithSettings",
                         true,
                         {{"MVTandemTrim", "On"}, {"MVTopMargin", "7"}, {"MVRightMargin", "9"}}}),
    [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace tandemtrim::test
