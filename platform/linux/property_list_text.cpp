#include "platform/linux/property_list_text.hpp"

#include <algorithm>
#include <array>

#include "platform/linux/property_list_scalars.hpp"

namespace tandemtrim::platform::linux {
namespace {

constexpr bool isBlank(char character) {
  return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

constexpr bool isContainer(std::string_view element) { return element == "dict" || element == "array"; }

// Walks through the markup once, checks it and writes it anew: without comments, instructions, attributes and
// short forms, so that libplist sees elements, text and character data and nothing else.
class Walk {
 public:
  explicit Walk(std::string_view text) : rest_(text) { result.xml.reserve(text.size()); }

  bool toTheEnd() {
    while (!rest_.empty()) {
      if (!copyText() || !markup()) return false;
    }
    return open_.empty() && started_;
  }

  PropertyListText result;

 private:
  // Cuts off everything before `end` and `end` itself; none when the rest does not hold it.
  std::optional<std::string_view> cutThrough(std::string_view end) {
    const auto place = rest_.find(end);
    if (place == std::string_view::npos) return std::nullopt;
    const auto before = rest_.substr(0, place);
    rest_.remove_prefix(place + end.size());
    return before;
  }

  // Only blanks may stand outside the outermost element; those between the elements of a container say
  // nothing.
  bool copyText() {
    const auto text = rest_.substr(0, rest_.find('<'));
    rest_.remove_prefix(text.size());
    const bool saysSomething = !std::ranges::all_of(text, isBlank);
    if (open_.empty()) return !saysSomething;
    if (saysSomething || !isContainer(open_.back())) result.xml += text;
    return true;
  }

  bool markup() {
    struct Kind {
      std::string_view begin, end;
      bool isText;
    };
    static constexpr std::array kKinds{Kind{"<!--", "-->", false}, Kind{"<?", "?>", false},
                                       Kind{"<!DOCTYPE", ">", false}, Kind{"<![CDATA[", "]]>", true}};
    if (!rest_.starts_with("<!") && !rest_.starts_with("<?")) return rest_.empty() || tag();
    for (const auto& kind : kKinds) {
      if (!rest_.starts_with(kind.begin)) continue;
      rest_.remove_prefix(kind.begin.size());
      const auto content = cutThrough(kind.end);
      if (!content) return false;
      if (kind.isText) result.xml.append(kind.begin).append(*content).append(kind.end);
      return true;
    }
    return false;
  }

  bool tag() {
    rest_.remove_prefix(1);
    auto name = cutThrough(">").value_or("");
    const bool isEmpty = name.ends_with('/');
    if (isEmpty) name.remove_suffix(1);
    const bool closes = name.starts_with('/');
    if (closes) name.remove_prefix(1);
    name = {name.begin(), std::ranges::find_if(name, isBlank)};
    if (closes) return close(name);
    if (const auto read = findScalarReader(name)) return !isEmpty && scalar(name, read);
    if (!open(name)) return false;
    if (isEmpty) close(name);
    return true;
  }

  bool open(std::string_view name) {
    const bool isOutermost = open_.empty();
    if (isOutermost != (name == "plist") || (isOutermost && started_)) return false;
    if (isContainer(name) && open_.size() > kPropertyListLevels) return false;
    started_ = true;
    open_.push_back(name);
    write("<", name);
    return true;
  }

  bool close(std::string_view name) {
    if (open_.empty() || open_.back() != name) return false;
    open_.pop_back();
    write("</", name);
    return true;
  }

  void write(std::string_view mark, std::string_view name) {
    result.xml.append(mark).append(name).push_back('>');
  }

  bool scalar(std::string_view name, ScalarReader read) {
    const auto text = cutThrough("</" + std::string(name) + ">");
    auto object = text && !open_.empty() ? read(*text) : nullptr;
    if (!object) return false;
    result.xml.append("<integer>").append(std::to_string(result.scalars.size())).append("</integer>");
    result.scalars.push_back(std::move(object));
    return true;
  }

  std::string_view rest_;
  std::vector<std::string_view> open_;
  bool started_ = false;
};

}  // namespace

std::optional<PropertyListText> preparePropertyList(std::string_view text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  if (text.find('\0') != std::string_view::npos) return std::nullopt;
  Walk walk(text);
  if (!walk.toTheEnd()) return std::nullopt;
  return std::move(walk.result);
}

}  // namespace tandemtrim::platform::linux
