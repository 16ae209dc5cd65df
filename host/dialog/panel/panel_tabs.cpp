#include "host/dialog/panel/panel_tabs.hpp"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

#include <gtk/gtk.h>

#include "host/dialog/panel/custom_tab.hpp"
#include "host/dialog/texts/texts.hpp"
#include "host/panel/bundle_search.hpp"

namespace tandemtrim::host {
namespace {

// GTK's notebook with all tabs of the dialog.
GtkNotebook* notebookOf(Gtk::Widget& page) {
  return GTK_NOTEBOOK(gtk_widget_get_ancestor(page.gobj(), GTK_TYPE_NOTEBOOK));
}

PaperSheet sheetIn(const Gtk::PageSetup& setup, ppd_file_t* ppd) {
  constexpr auto kUnit = Gtk::Unit::MM;
  PaperSheet sheet{setup.get_paper_width(kUnit), setup.get_paper_height(kUnit),
                   unprintableEdges(ppd, setup.get_paper_size().get_ppd_name()),
                   ppd != nullptr && ppd->landscape < 0};
  const bool isUpright = setup.get_orientation() == Gtk::PageOrientation::PORTRAIT ||
                         setup.get_orientation() == Gtk::PageOrientation::REVERSE_PORTRAIT;
  if (sheet.unprintable && !isUpright) sheet.unprintable = edgesAcross(*sheet.unprintable);
  return sheet;
}

}  // namespace

PanelTabs::PanelTabs(Gtk::PrintUnixDialog& dialog, std::optional<std::string> plugin, Report report,
                     Events events)
    : dialog_(dialog),
      plugin_(std::move(plugin)),
      report_(std::move(report)),
      events_(std::move(events)),
      page_(*Gtk::make_managed<PanelPage>(
          events_.presets, [this](int step) { preview_.turn(step); }, [this] { return pageNote(); })),
      summary_(*Gtk::make_managed<SummaryTab>()),
      title_(addTabs()),
      preview_(report_, {events_.openDocument, [this] { showPage(); }}) {
  // Until a printer is chosen GTK shows all its tabs; unless they scroll, they make the dialog wider.
  gtk_notebook_set_scrollable(notebookOf(page_), TRUE);
  page_.signal_map().connect(sigc::mem_fun(*this, &PanelTabs::onPageShown));
  page_.signal_unmap().connect(sigc::mem_fun(*this, &PanelTabs::onPageLeft));
  page_.signalCorrect.connect(sigc::mem_fun(*this, &PanelTabs::correct));
  page_.signalEdited.connect(sigc::mem_fun(*this, &PanelTabs::onEdited));
  page_.help.signal_clicked().connect([this] {
    if (bundle_) events_.onHelp(title_.get_text() + '\n' + helpText(*bundle_));
  });
  summary_.signal_map().connect(sigc::mem_fun(*this, &PanelTabs::showSummary));
}

// GTK puts later tabs before earlier ones. Returns the title of the panel's page.
Gtk::Label& PanelTabs::addTabs() {
  addCustomTab(dialog_, summary_, localized(kSummaryText));
  summary_.set_visible(false);
  return addCustomTab(dialog_, page_, localized(kPageTitleText));
}

// GTK's notebook may keep a focused child though nothing is focused. It would then pass the focus to a page
// of a destroyed window.
PanelTabs::~PanelTabs() {
  close();
  gtk_widget_set_focus_child(GTK_WIDGET(notebookOf(page_)), nullptr);
}

bool PanelTabs::guarded(const std::function<void()>& operation) {
  try {
    operation();
    return true;
  } catch (const PluginFailure& failure) {
    fail(failure);
    return false;
  }
}

void PanelTabs::fail(const Failure& failure) {
  close();
  hide();
  hasFailed_ = true;
  events_.onFailure(failure);
}

// Another printer has other defaults.
void PanelTabs::close() {
  if (session_) session_->removeDefaults();
  page_.removeView();
  summary_.set_visible(false);
  session_.reset();
}

void PanelTabs::startFrom(const std::string& printer, const std::vector<Options>& options) {
  settings_ = {};
  if (const auto left = left_.find(printer); left != left_.end()) {
    settings_ = left->second;
  } else {
    for (const auto& some : options) storeOptions(some, keywords(), settings_);
  }
}

void PanelTabs::leavePrinter(const std::string& printer) {
  const bool isOpen = session_ != nullptr;
  if (session_) guarded([&] { session_->save(); });
  close();
  if (isOpen) left_[printer] = settings_;
  bundle_.reset();
  hasFailed_ = false;
}

void PanelTabs::showText(const std::string& text) {
  page_.showText(text);
  page_.set_visible();
}

bool PanelTabs::findBundle(ppd_file_t* ppd) {
  return guarded([&] {
    if (const auto path = bundleOfPrinter(plugin_, ppd)) bundle_ = openBundle(path->string(), report_);
  });
}

bool PanelTabs::open(ppd_file_t* ppd, const Options& queueDefaults) {
  ppd_ = ppd;
  return guarded([&] {
    session_ =
        std::make_unique<PanelSession>(*bundle_, kGtkModule, settings_, ppd,
                                       printersDefaults(bundle_->info.optionKeywords(), ppd, queueDefaults));
    title_.set_text(session_->title());
    page_.help.set_visible(session_->shouldShowHelp());
    page_.set_visible();
    summary_.set_visible();
    if (page_.get_mapped()) showPanel();
    warn();
  });
}

std::vector<std::string> PanelTabs::keywords() const {
  if (session_) return session_->keywords();
  return bundle_ ? bundle_->info.optionKeywords() : keywordsOfPanels(plugin_);
}

// The view is loaded when its page is first shown. Its paper is chosen in another tab, so the view gets the
// size each time.
void PanelTabs::showPanel() {
  auto& view = session_->view();
  if (view.toolkitView() == nullptr) throw incomplete(bundle_->path, "its view could not be loaded");
  page_.showView(GTK_WIDGET(view.toolkitView()));
  showPaper();
  session_->willShow();
  warn();
  updatePresets();
  showPage();
}

void PanelTabs::showPaper() {
  const auto sheet = paper();
  callPlugin(bundle_->path, "setPaperSize",
             [&] { session_->view().setPaperSize(sheet.width, sheet.height); });
}

void PanelTabs::updateSheet() {
  if (!session_ || !page_.get_mapped()) return;
  guarded([&] { showPaper(); });
  showPage();
}

// Other tabs choose which pages are printed and how they are laid out.
void PanelTabs::showPage() {
  if (!session_ || !page_.get_mapped()) return;
  guarded([&] {
    const auto options = events_.optionsOfServer();
    const bool isShown = options && isPageOnItsSheet(*options);
    if (isShown) preview_.show(printedPages(*options));
    const auto* const page = isShown ? preview_.page() : nullptr;
    const auto image = page == nullptr ? nullptr : placed(*page, sheetIn(*dialog_.get_page_setup(), ppd_));
    if (image != nullptr) image->name = pageNumberText(preview_.place());
    callPlugin(bundle_->path, "showPage", [&] { session_->view().showPage(image); });
    page_.showPagePlace(image == nullptr ? PagePlace{} : preview_.place());
  });
}

std::string PanelTabs::pageNote() {
  std::string note;
  if (session_) {
    guarded([&] { callPlugin(bundle_->path, "pageNote", [&] { note = session_->view().pageNote(); }); });
  }
  return note;
}

void PanelTabs::forgetPage() { preview_.forget(); }

void PanelTabs::onPageShown() {
  if (session_) guarded([&] { showPanel(); });
}

// Edits are saved, because the page shows the stored values when it is shown again.
void PanelTabs::onPageLeft() {
  if (!session_ || !dialog_.get_visible()) return;
  guarded([&] {
    session_->save();
    warn();
    if (!session_ || session_->shouldHide()) return;
    auto* const notebook = notebookOf(page_);
    gtk_notebook_set_current_page(notebook, gtk_notebook_page_num(notebook, GTK_WIDGET(page_.gobj())));
  });
}

// Building a summary restores the stored values in the controls, so their edits are saved first.
void PanelTabs::showSummary() {
  summary_.showRows({});
  if (!session_) return;
  guarded([&] {
    session_->save();
    summary_.showRows(session_->summary());
  });
}

// The edit may have fixed the value that the warning names, or have switched on the function for which a
// default is illegal.
void PanelTabs::onEdited() {
  if (session_) guarded([&] { session_->save(); });
  warn();
  updatePresets();
}

void PanelTabs::show(const Options& options) {
  if (session_) {
    guarded([&] {
      Options own;
      for (const auto& option : options) {
        if (spelledAsIn(keywords(), option.keyword)) own.push_back(option);
      }
      session_->save();
      storeOptions(own, keywords(), settings_);
      session_->restore();
    });
  }
  warn();
}

Options PanelTabs::shownOptions() {
  if (session_) guarded([&] { session_->save(); });
  return options();
}

void PanelTabs::updatePresets() {
  if (!session_) return;
  page_.showPresets(events_.presets.list());
  warn();
}

std::optional<std::string> PanelTabs::family() const {
  return bundle_ ? std::optional(std::filesystem::path(bundle_->path).stem().string()) : std::nullopt;
}

void PanelTabs::warn() {
  if (!session_) return;
  guarded([&] {
    session_->correctDefaults();
    const auto illegal = session_->illegalChoices();
    // The warning is not made before the page is shown, which calls this function again.
    if (page_.get_mapped()) page_.warnOf(illegal, findConflicts());
    page_.reportEdits(!illegal.empty() || !session_->illegalDefaults().empty() || isConstrained() ||
                      events_.isPresetChosen() || canConflictWithPaper(session_->settings(), paper()));
  });
}

bool PanelTabs::isConstrained() const { return ppd_ != nullptr && hasConstraints(*ppd_, keywords()); }

Paper PanelTabs::paper() const {
  const auto setup = dialog_.get_page_setup();
  return {setup->get_paper_width(Gtk::Unit::MM), setup->get_paper_height(Gtk::Unit::MM),
          localized(kPaperText), setup->get_paper_size().get_display_name()};
}

std::vector<Conflict> PanelTabs::findConflicts() const {
  const auto settings = session_->settings();
  auto conflicts = conflictsWithPaper(settings, paper());
  if (!isConstrained()) return conflicts;
  std::ranges::move(conflictsOf(*ppd_, settings, events_.otherOptions().value_or(Options())),
                    std::back_inserter(conflicts));
  return conflicts;
}

std::vector<Conflict> PanelTabs::conflicts() {
  std::vector<Conflict> found;
  if (session_) guarded([&] { found = findConflicts(); });
  return found;
}

PanelResult PanelTabs::result() {
  if (!session_) return {};
  try {
    return {session_->summary(), session_->settings()};
  } catch (const PluginFailure& failure) {
    report_(failure.what());
    return {};
  }
}

void PanelTabs::correct() {
  if (session_) guarded([&] { session_->correct(); });
  warn();
}

std::optional<std::vector<IllegalValue>> PanelTabs::prepareToPrint() {
  std::vector<IllegalValue> illegal;
  if (!session_) return illegal;
  bool agrees = false;
  const bool works = guarded([&] {
    agrees = session_->shouldPrint();
    session_->save();
    session_->correctDefaults();
    illegal = session_->illegalChoices();
  });
  return works && agrees ? std::optional(illegal) : std::nullopt;
}

std::vector<std::string> PanelTabs::illegalDefaults() {
  std::vector<std::string> keywords;
  if (!session_) return keywords;
  guarded([&] {
    for (const auto& illegal : session_->illegalDefaults()) keywords.push_back(illegal.setting.keyword);
  });
  return keywords;
}

}  // namespace tandemtrim::host
