// Storing the values of the text form that are checked (docs/format-2.md).

#include "platform/core/file/text_field_binder.h"

namespace zuna_core {

namespace {

void TakePair(void* target, const JsonRow* rows, std::size_t) {
  auto& pair = *static_cast<std::pair<std::uint16_t, std::uint16_t>*>(target);
  pair.first = static_cast<std::uint16_t>((*rows)[0]);
  pair.second = static_cast<std::uint16_t>((*rows)[1]);
}

constexpr RowType kPairType{2, {0xFFFF, 0xFFFF}, &TakePair};

}  // namespace

void TextFieldBinder::Pair(std::string_view key, std::pair<std::uint16_t, std::uint16_t>& pair) {
  object_.Add({key, JsonKind::kRow, &pair, nullptr, nullptr, &kPairType});
}

const char* TextFieldBinder::StoreAnyText(void* target, std::string&& text) {
  *static_cast<std::string*>(target) = std::move(text);
  return nullptr;
}

const char* TextFieldBinder::StoreBarNumber(void* target, std::string&& text) {
  return SetBarNumber(*static_cast<TL::BarsBeats*>(target), text);
}

const char* TextFieldBinder::StoreIdentifier(void* target, std::string&& text) {
  try {
    *static_cast<kit::UUID*>(target) = kit::UUID::FromString(text);
  } catch (const std::invalid_argument&) {
    return "expected an identifier such as \"00112233-4455-6677-8899-aabbccddeeff\"";
  }
  return nullptr;
}

const char* TextFieldBinder::StoreKind(void* target, std::string&& text) {
  return CheckKind(*static_cast<FileKind*>(target), text);
}

const char* TextFieldBinder::StoreVersion(void* target, std::string&& text) {
  return CheckVersion(*static_cast<FileKind*>(target), text);
}

}  // namespace zuna_core
