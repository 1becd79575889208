// The binary interface of events.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>

#include "CL/paired_events.h"

// The order of the virtual operations is part of the binary interface. A pointer to a member tells the place
// of a virtual operation in its table under the Itanium C++ ABI, section 2.3 ("Member Function Pointers").

#if !defined(_MSC_VER) && defined(__GXX_ABI_VERSION)

namespace {

using CL::PairedEvent;
using cmn::ZunaEvent;

template <typename Member>
std::size_t Place(Member member) {
  struct {
    std::ptrdiff_t pointer;
    std::ptrdiff_t adjustment;
  } parts{};
  static_assert(sizeof parts == sizeof member);
  std::memcpy(&parts, &member, sizeof parts);
#if defined(__arm__) || defined(__aarch64__)
  EXPECT_EQ(parts.adjustment, 1);  // "virtual" is marked here
  return static_cast<std::size_t>(parts.pointer) / sizeof(void*);
#else
  EXPECT_EQ(parts.pointer % 2, 1);  // "virtual" is marked here
  EXPECT_EQ(parts.adjustment, 0);
  return static_cast<std::size_t>(parts.pointer - 1) / sizeof(void*);
#endif
}

TEST(PairedEvent, KeepsTheOrderOfItsVirtualOperations) {
  using Print = void (ZunaEvent::*)(std::ostream&) const;
  using PrintToConsole = void (ZunaEvent::*)(kit::CoutBuffer&) const;
  using SetFloat = void (PairedEvent::*)(float);
  using SetDouble = void (PairedEvent::*)(double);
  // 0 and 1 are the destructors.
  EXPECT_EQ(Place(&ZunaEvent::Position), 2U);
  EXPECT_EQ(Place(&ZunaEvent::EventCode), 3U);
  EXPECT_EQ(Place(&ZunaEvent::operator<), 4U);
  EXPECT_EQ(Place(&ZunaEvent::PositionLess), 5U);
  EXPECT_EQ(Place(&ZunaEvent::PositionGreater), 6U);
  EXPECT_EQ(Place(&ZunaEvent::PositionEqual), 7U);
  EXPECT_EQ(Place(&ZunaEvent::PositionNotLess), 8U);
  EXPECT_EQ(Place(&ZunaEvent::PositionNotGreater), 9U);
  EXPECT_EQ(Place(&ZunaEvent::operator==), 10U);
  EXPECT_EQ(Place(&ZunaEvent::operator!=), 11U);
  EXPECT_EQ(Place(static_cast<Print>(&ZunaEvent::WriteString)), 12U);
  EXPECT_EQ(Place(static_cast<PrintToConsole>(&ZunaEvent::WriteString)), 13U);
  EXPECT_EQ(Place(&PairedEvent::StartPosition), 14U);
  EXPECT_EQ(Place(&PairedEvent::SetStartPosition), 15U);
  EXPECT_EQ(Place(&PairedEvent::EndPosition), 16U);
  EXPECT_EQ(Place(&PairedEvent::SetEndPosition), 17U);
  EXPECT_EQ(Place(&PairedEvent::value), 18U);
  EXPECT_EQ(Place(&PairedEvent::Reserved1), 19U);
  EXPECT_EQ(Place(&PairedEvent::IntValue), 20U);
  EXPECT_EQ(Place(&PairedEvent::SetIntValue), 21U);
  EXPECT_EQ(Place(&PairedEvent::FloatValue), 22U);
  EXPECT_EQ(Place(static_cast<SetFloat>(&PairedEvent::SetFloatValue)), 23U);
  EXPECT_EQ(Place(static_cast<SetDouble>(&PairedEvent::SetFloatValue)), 24U);
  EXPECT_EQ(Place(&PairedEvent::FillDisplayRecord), 25U);
  EXPECT_EQ(Place(&PairedEvent::ClearDisplayWords), 26U);
  EXPECT_EQ(Place(&PairedEvent::Reserved2), 27U);
  EXPECT_EQ(Place(&PairedEvent::Reserved3), 28U);
  EXPECT_EQ(Place(&PairedEvent::Reserved4), 29U);
  EXPECT_EQ(Place(&PairedEvent::Reserved5), 30U);
  EXPECT_EQ(Place(&PairedEvent::Span), 31U);
  EXPECT_EQ(Place(&PairedEvent::WriteBinary), 32U);
}

TEST(PairedEvent, HasItsMembersInOrder) {
  const CL::Vamp event(1, 2, "", 3);
  const auto place = [&event](const void* member) {
    return static_cast<const char*>(member) - reinterpret_cast<const char*>(&event);
  };
  EXPECT_EQ(place(&event.label), static_cast<std::ptrdiff_t>(sizeof(void*)));
  EXPECT_EQ(place(&event.start), static_cast<std::ptrdiff_t>(sizeof(void*) + sizeof(std::string)));
  EXPECT_EQ(place(&event.end), place(&event.start) + 4);
  EXPECT_EQ(place(&event.value_bits), place(&event.end) + 4);
}

}  // namespace

#endif
