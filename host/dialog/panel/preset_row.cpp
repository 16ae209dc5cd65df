#include "host/dialog/panel/preset_row.hpp"

#include <utility>

#include <giomm/menu.h>
#include <gtk/gtk.h>

#include "host/dialog/texts/texts.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kGapInRow = 12;
constexpr int kMostCharactersOfName = 40;
constexpr const char* kGroup = "preset";
constexpr const char* kChoose = "choose";
constexpr const char* kPrinters = "printers";

Glib::RefPtr<Gio::Menu> sectionOf(const std::vector<std::pair<const char*, const char*>>& items) {
  auto section = Gio::Menu::create();
  for (const auto& [text, action] : items)
    section->append(localized(text), std::string(kGroup) + '.' + action);
  return section;
}

}  // namespace

PresetRow::PresetRow(Events events)
    : Gtk::Box(Gtk::Orientation::HORIZONTAL, kGapInRow),
      events_(std::move(events)),
      label_(localized(kPresetText)),
      actions_(Gio::SimpleActionGroup::create()) {
  title_.set_ellipsize(Pango::EllipsizeMode::END);
  title_.set_max_width_chars(kMostCharactersOfName);
  title_.set_xalign(0);
  auto& face = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, kGapInRow);
  title_.set_hexpand();
  face.append(title_);
  auto* const arrow = gtk_image_new_from_icon_name("pan-down-symbolic");
  gtk_box_append(face.gobj(), arrow);
  button_.set_child(face);
  button_.set_create_popup_func([this] { makeMenu(); });
  append(label_);
  append(button_);
  // Moves what is added later to the end of the row.
  auto& gap = *Gtk::make_managed<Gtk::Box>();
  gap.set_hexpand();
  append(gap);
  insert_action_group(kGroup, actions_);
}

void PresetRow::show(const PresetList& list) {
  const auto title = titleOf(list);
  title_.set_text(title);
  const auto spoken = localized(kPresetText) + ": " + title;
  gtk_accessible_update_property(GTK_ACCESSIBLE(button_.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 spoken.c_str(), -1);
}

void PresetRow::makeMenu() {
  const auto list = events_.list();
  auto menu = Gio::Menu::create();
  auto names = Gio::Menu::create();
  for (const auto& name : list.names) {
    const auto item = Gio::MenuItem::create(unmarked(name), "");
    item->set_action_and_target(std::string(kGroup) + '.' + kChoose,
                                Glib::Variant<Glib::ustring>::create(name));
    names->append_item(item);
  }
  menu->append_section(names);
  menu->append_section(sectionOf({{kSavePresetText, "save"}, {kBackToPresetText, "back"}}));
  menu->append_section(sectionOf({{kSavePresetAsText, "save-as"},
                                  {kRenamePresetText, "rename"},
                                  {kDeletePresetText, "delete"},
                                  {kPresetOfPrinterText, kPrinters}}));

  const auto live = liveActions(list);
  const auto add = [&](const char* name, bool isLive, const std::function<void()>& act) {
    actions_->add_action(name, act)->set_enabled(isLive);
  };
  add("save", live.save, events_.onSave);
  add("back", live.back, events_.onBack);
  add("save-as", true, events_.onSaveAs);
  add("rename", live.change, events_.onRename);
  add("delete", live.change, events_.onDelete);
  actions_->add_action_radio_string(
      kChoose, [this](const Glib::ustring& name) { events_.onChoose(name); }, list.chosen.value_or(""));
  actions_
      ->add_action_bool(
          kPrinters,
          [this, isPrinterDefault = list.isPrinterDefault] { events_.onPrinters(!isPrinterDefault); },
          list.isPrinterDefault)
      ->set_enabled(live.choosePrinters);
  button_.set_menu_model(menu);
}

}  // namespace tandemtrim::host
