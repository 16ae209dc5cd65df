#include "platform/property_list.hpp"

#include <cstdlib>
#include <utility>

#include <plist/plist.h>

#include "platform/linux/property_list_text.hpp"
#include "platform/linux/regular_file.hpp"
#include "platform/utf8.hpp"

namespace tandemtrim::platform {
namespace {

constexpr std::size_t kLargestFile = 64UL * 1024;

struct Release {
  void operator()(plist_t node) const { plist_free(node); }
};
struct Free {
  void operator()(void* memory) const { std::free(memory); }
};

ObjectRef objectFrom(plist_t node, const std::vector<ObjectRef>& scalars);

std::string_view textOf(plist_t node) {
  std::uint64_t length = 0;
  const char* text = plist_get_string_ptr(node, &length);
  return {text, length};
}

// A reference to a character can still name one that no text may hold.
ObjectRef stringFrom(plist_t node) {
  const auto text = textOf(node);
  if (!isUtf8(text)) return nullptr;
  return makeObject(std::string(text));
}

ObjectRef booleanFrom(plist_t node) {
  std::uint8_t value = 0;
  plist_get_bool_val(node, &value);
  return makeObject(value != 0);
}

ObjectRef scalarFrom(plist_t node, const std::vector<ObjectRef>& scalars) {
  std::uint64_t index = 0;
  plist_get_uint_val(node, &index);
  return scalars.at(index);
}

ObjectRef dataFrom(plist_t node) {
  std::uint64_t length = 0;
  const auto* bytes = reinterpret_cast<const std::byte*>(plist_get_data_ptr(node, &length));
  return makeObject(Data{{bytes, bytes + length}});
}

ObjectRef arrayFrom(plist_t node, const std::vector<ObjectRef>& scalars) {
  Array array;
  void* iterator = nullptr;
  plist_array_new_iter(node, &iterator);
  const std::unique_ptr<void, Free> owner(iterator);
  plist_t item = nullptr;
  while (plist_array_next_item(node, iterator, &item), item != nullptr) {
    array.push_back(objectFrom(item, scalars));
    if (!array.back()) return nullptr;
  }
  return makeObject(std::move(array));
}

ObjectRef dictionaryFrom(plist_t node, const std::vector<ObjectRef>& scalars) {
  Dictionary dictionary;
  void* iterator = nullptr;
  plist_dict_new_iter(node, &iterator);
  const std::unique_ptr<void, Free> owner(iterator);
  plist_t item = nullptr;
  char* key = nullptr;
  while (plist_dict_next_item(node, iterator, &key, &item), item != nullptr) {
    const std::unique_ptr<char, Free> keyOwner(key);
    auto object = objectFrom(item, scalars);
    if (!object || !isUtf8(key)) return nullptr;
    dictionary.insert_or_assign(key, std::move(object));
  }
  return makeObject(std::move(dictionary));
}

ObjectRef objectFrom(plist_t node, const std::vector<ObjectRef>& scalars) {
  switch (plist_get_node_type(node)) {
    case PLIST_DICT:
      return dictionaryFrom(node, scalars);
    case PLIST_ARRAY:
      return arrayFrom(node, scalars);
    case PLIST_STRING:
      return stringFrom(node);
    case PLIST_BOOLEAN:
      return booleanFrom(node);
    case PLIST_UINT:
      return scalarFrom(node, scalars);
    default:
      return dataFrom(node);
  }
}

ObjectRef rootFrom(const linux::PropertyListText& text) {
  plist_t root = nullptr;
  plist_from_xml(text.xml.data(), static_cast<std::uint32_t>(text.xml.size()), &root);
  const std::unique_ptr<void, Release> owner(root);
  return root == nullptr ? nullptr : objectFrom(root, text.scalars);
}

}  // namespace

std::shared_ptr<const Dictionary> dictionaryWithContentsOfFile(const std::optional<std::string>& path) {
  const auto bytes = path ? linux::contentsOfRegularFile(*path, kLargestFile) : std::nullopt;
  const auto text = bytes ? linux::preparePropertyList(*bytes) : std::nullopt;
  const auto root = text ? rootFrom(*text) : nullptr;
  return {root, root ? root->as<Dictionary>() : nullptr};
}

}  // namespace tandemtrim::platform
