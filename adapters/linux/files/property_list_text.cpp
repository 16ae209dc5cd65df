#include "adapters/linux/files/property_list_text.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "adapters/linux/files/property_list_scalars.hpp"
#include "platform/utf8.hpp"

namespace tandemtrim::platform::linux {
namespace {

constexpr std::string_view kPropertyList = "plist";
constexpr std::string_view kDictionary = "dict";
constexpr std::string_view kArray = "array";
constexpr std::string_view kKey = "key";

// The value of an element, or null when it cannot be read.
struct Child {
  bool isKey;
  ObjectRef object;
};
using Children = std::vector<Child>;

// An open element with its contents so far.
struct Element {
  std::string_view name;
  std::string text;
  Children children;
};

// A text must not contain NUL, not even as a reference.
bool isText(std::string_view text) { return isUtf8(text) && text.find('\0') == std::string_view::npos; }

// The character that a reference such as "amp", "#228" or "#xE4" names; NUL for an invalid reference.
char32_t referenced(std::string_view name) {
  struct Named {
    std::string_view name;
    char character;
  };
  static constexpr std::array kNamed{Named{"lt", '<'}, Named{"gt", '>'}, Named{"amp", '&'},
                                     Named{"quot", '"'}, Named{"apos", '\''}};
  for (const auto& [known, character] : kNamed) {
    if (known == name) return static_cast<unsigned char>(character);
  }
  if (!name.starts_with('#')) return 0;
  name.remove_prefix(1);
  const int base = name.starts_with('x') ? 16 : 10;
  if (base == 16) name.remove_prefix(1);
  constexpr std::uint32_t kLastCharacter = 0x10FFFF;
  std::uint32_t point = 0;
  // The point stays 0 if there is no number, or one that is too large for the type.
  const auto* end = std::from_chars(name.data(), name.data() + name.size(), point, base).ptr;
  return end == name.data() + name.size() && point <= kLastCharacter ? point : 0;
}

// Appends the text with its references replaced; an unterminated one appends NUL.
void appendReplaced(std::string& out, std::string_view text) {
  for (auto mark = text.find('&'); mark != std::string_view::npos; mark = text.find('&')) {
    out += text.substr(0, mark);
    const auto end = text.find(';', mark);
    if (end == std::string_view::npos) return out.push_back('\0');
    appendUtf8(out, referenced(text.substr(mark + 1, end - mark - 1)));
    text.remove_prefix(end + 1);
  }
  out += text;
}

ObjectRef dictionaryFrom(const Children& children) {
  if (children.size() % 2 != 0) return nullptr;
  Dictionary dictionary;
  for (std::size_t i = 0; i < children.size(); i += 2) {
    const auto& [isKey, key] = children[i];
    const auto& [isAnotherKey, object] = children[i + 1];
    if (!isKey || isAnotherKey) return nullptr;
    if (!key) continue;
    const auto& name = *key->as<std::string>();
    if (object) {
      dictionary.insert_or_assign(name, object);
    } else {
      dictionary.erase(name);
    }
  }
  return makeObject(std::move(dictionary));
}

ObjectRef arrayFrom(const Children& children) {
  Array array;
  for (const auto& [isKey, object] : children) {
    if (isKey || !object) return nullptr;
    array.push_back(object);
  }
  return makeObject(std::move(array));
}

ObjectRef objectFrom(const Element& element) {
  const bool isDictionary = element.name == kDictionary;
  if (isDictionary || element.name == kArray) {
    if (!std::ranges::all_of(element.text, isBlank)) return nullptr;
    return isDictionary ? dictionaryFrom(element.children) : arrayFrom(element.children);
  }
  if (!element.children.empty() || !isText(element.text)) return nullptr;
  const auto read = findScalarReader(element.name);
  return read == nullptr ? nullptr : read(element.text);
}

class Parser {
 public:
  explicit Parser(std::string_view text) : rest_(text) {}

  // Parses up to the end of the text or the first fault; false for a fault.
  bool parse() {
    while (!rest_.empty()) {
      if (!text() || !markup()) return false;
    }
    return true;
  }

  // The first value in the outermost element, as soon as that is closed.
  ObjectRef root;
  [[nodiscard]] std::string_view rest() const { return rest_; }

 private:
  // Removes everything through `end` and returns the part before it; nullopt if the rest does not contain it.
  std::optional<std::string_view> cutThrough(std::string_view end) {
    const auto offset = rest_.find(end);
    if (offset == std::string_view::npos) return std::nullopt;
    const auto before = rest_.substr(0, offset);
    rest_.remove_prefix(offset + end.size());
    return before;
  }

  // Only blanks are allowed outside the outermost element.
  bool text() {
    const auto text = rest_.substr(0, rest_.find('<'));
    rest_.remove_prefix(text.size());
    if (open_.empty()) return std::ranges::all_of(text, isBlank);
    if (skipped_ == 0) appendReplaced(open_.back().text, text);
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
      if (!content || (kind.isText && open_.empty())) return false;
      if (kind.isText && skipped_ == 0) open_.back().text += *content;
      return true;
    }
    return false;
  }

  bool tag() {
    const auto end = rest_.find('>');
    if (end == std::string_view::npos) return false;
    auto name = rest_.substr(1, end - 1);
    rest_.remove_prefix(end + 1);
    const bool isEmpty = name.ends_with('/');
    if (isEmpty) name.remove_suffix(1);
    const bool closes = name.starts_with('/');
    if (closes) name.remove_prefix(1);
    name = {name.begin(), std::ranges::find_if(name, isBlank)};
    if (!closes && !open(name)) return false;
    return !(closes || isEmpty) || close(name);
  }

  bool open(std::string_view name) {
    if (open_.empty() && (name != kPropertyList || isStarted_)) return false;
    isStarted_ = true;
    if (open_.size() > kPropertyListLevels) {
      ++skipped_;
    } else {
      open_.push_back({name, {}, {}});
    }
    return true;
  }

  bool close(std::string_view name) {
    if (skipped_ > 0) {
      --skipped_;
      if (skipped_ == 0) open_.back().children.push_back({name == kKey, nullptr});
      return true;
    }
    if (open_.empty() || open_.back().name != name) return false;
    const auto element = std::move(open_.back());
    open_.pop_back();
    if (open_.empty()) {
      if (!element.children.empty()) root = element.children.front().object;
    } else {
      open_.back().children.push_back({name == kKey, objectFrom(element)});
    }
    return true;
  }

  std::string_view rest_;
  std::vector<Element> open_;
  // The number of open elements below the deepest level.
  std::size_t skipped_ = 0;
  bool isStarted_ = false;
};

}  // namespace

ObjectRef parsePropertyList(std::string_view text, std::size_t& line) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  Parser parser(text);
  if (parser.parse() && parser.root) return parser.root;
  const auto read = text.substr(0, text.size() - parser.rest().size());
  line = 1 + static_cast<std::size_t>(std::ranges::count(read, '\n'));
  return nullptr;
}

}  // namespace tandemtrim::platform::linux
