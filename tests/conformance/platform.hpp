#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/conformance/scene.hpp"

/// What each platform implements for the conformance suite: a print dialog that loads the plug-in, and a user
/// in front of it.
namespace tandemtrim::conformance {

/// One item of a menu: its title, and the value behind it.
struct Choice {
  std::string title;
  std::optional<std::string> value;
  bool operator==(const Choice&) const = default;
};

/// What a user sees of one control; fields that its class lacks mean nothing.
struct Look {
  std::string text;
  bool enabled = true;
  /// Labels: "blackColor" or "lightGrayColor".
  std::string color;
  /// Check boxes: 1, 0 or -1.
  int state = 0;
  /// Menus: the value behind the chosen item.
  std::optional<std::string> chosen;
  /// Steppers: the bounds, in millimetres.
  double min = 0;
  double max = 0;
};

struct Summary {
  std::map<std::string, std::string> rows;
  /// The titles in display order, or nullopt.
  std::optional<std::vector<std::string>> order;
  bool operator==(const Summary&) const = default;
};

/// Which object a margin box accepts for a number object that it is given.
enum class Accepted { itself, minimum, maximum, another };

/// One panel: the host's calls, and what a user does and sees. Controls are named by their outlets.
class Panel {
 public:
  virtual ~Panel() = default;

  virtual std::string panelName() = 0;
  virtual std::optional<std::string> panelKind() = 0;
  /// Requests the view and returns whether there is one. Passes on the panel's exceptions.
  virtual bool panelView() = 0;
  /// An identity of the view: equal for the same view.
  virtual const void* viewIdentity() = 0;
  virtual Summary summaryInfo() = 0;
  /// Requests the summary and empties it, as its owner may.
  virtual void emptySummary() = 0;
  virtual void willShow() = 0;
  virtual bool shouldHide() = 0;
  virtual bool shouldShowHelp() = 0;
  virtual bool shouldPrint() = 0;
  virtual std::vector<std::string> supportedPPDOptionKeys() = 0;
  /// Requests the list and returns an identity of it: equal for the same list.
  virtual const void* keywordsIdentity() = 0;
  virtual bool save() = 0;
  virtual bool restore() = 0;

  /// Operations of the panel's view controller and its margin boxes.
  virtual void updateView() = 0;
  virtual void setViewIsInited(bool inited) = 0;
  virtual Accepted verifyValue(const std::string& textBox, int value) = 0;
  /// An identity of the box's smallest value: equal for the same number object.
  virtual const void* minimumIdentity(const std::string& textBox) = 0;

  virtual Look look(const std::string& outlet) = 0;
  /// The items of a menu that is not greyed, as it lists them when it is opened.
  virtual std::vector<Choice> choices(const std::string& menu) = 0;
  /// Replaces the whole text of a box. This and all other acts of the user return false when the control is
  /// greyed and ignores the user.
  virtual bool replaceText(const std::string& outlet, const std::string& text) = 0;
  /// Replaces the text as an assistive program does: the toolkit handles no other event before this returns.
  virtual bool replaceTextAtOnce(const std::string& outlet, const std::string& text) = 0;
  /// Types at the end of the text, key by key.
  virtual bool type(const std::string& outlet, const std::string& keys) = 0;
  virtual bool backspace(const std::string& outlet) = 0;
  virtual bool click(const std::string& outlet) = 0;
  virtual bool step(const std::string& outlet, int steps) = 0;
  virtual bool choose(const std::string& outlet, const std::string& value) = 0;
  /// Puts the check box into the mixed state, as only a program can.
  virtual void setMixed(const std::string& outlet) = 0;
};

/// A host with one job and the plug-in of a scene's bundle.
class Dialog {
 public:
  virtual ~Dialog() = default;

  /// A panel for an extension type (nullopt for a null type), with or without a host callback; null when the
  /// plug-in returns no panel.
  virtual std::unique_ptr<Panel> panelForType(std::optional<std::string> type, bool withCallback) = 0;
  /// The number of panels in the list for the print dialog's type.
  virtual std::size_t panelCount() = 0;

  virtual std::optional<std::string> stored(const std::string& key) = 0;
  virtual void store(const std::string& key, const std::optional<std::string>& value) = 0;
  /// The keys of the job's print settings, without those that the print system sets for every job.
  virtual std::vector<std::string> storedKeys() = 0;
};

/// Defined by each platform's test program.
std::unique_ptr<Dialog> openDialog(const Scene& scene);

/// Defined there too: the largest number of bytes that a box of the toolkit shows.
std::size_t longestText();

}  // namespace tandemtrim::conformance
