// Storing the values of the text form that are checked (docs/format-2.md).

#include "platform/core/file/text_field_binder.h"

#include <optional>

namespace zuna_core {

const char* TextFieldBinder::StoreBarNumber(void* target, std::string&& text) {
  return SetBarNumber(*static_cast<TL::BarsBeats*>(target), text);
}

const char* TextFieldBinder::StoreKind(void* target, std::string&& text) {
  return CheckKind(static_cast<TextHead*>(target)->kind, text);
}

const char* TextFieldBinder::StoreVersion(void* target, std::string&& text) {
  auto& head = *static_cast<TextHead*>(target);
  const std::optional<cmn::FileVersion> version = cmn::ParseVersion(text);
  if (!version) return "expected a version such as \"2.0\"";
  const bool known = head.any_version ? cmn::IsSupported(head.kind, *version) : *version == kTextVersion;
  head.version = *version;
  head.is_unsupported = !known;
  return known ? nullptr : "expected a version that is supported";
}

}  // namespace zuna_core
