#include "CL/paired_event.h"

#include <bit>
#include <limits>

#include "kit/format.h"
#include "platform/core/model/event_text.h"

namespace CL {

PairedEvent::PairedEvent(std::uint32_t start_position, std::uint32_t end_position,
                         const std::string& event_label, std::uint32_t bits)
    : cmn::ZunaEvent(event_label), start(start_position), end(end_position), value_bits(bits) {}

std::uint32_t PairedEvent::Position() const { return start; }

void PairedEvent::WriteString(std::ostream& os) const {
  zuna_core::WriteEventText(os, *this,
                            kit::format("%lu, %lu, %ld", static_cast<unsigned long>(start),
                                        static_cast<unsigned long>(end), static_cast<long>(IntValue())));
}

std::uint32_t PairedEvent::StartPosition() const { return start; }
void PairedEvent::SetStartPosition(std::uint32_t position) { start = position; }
std::uint32_t PairedEvent::EndPosition() const { return end; }
void PairedEvent::SetEndPosition(std::uint32_t position) { end = position; }

double PairedEvent::value() const { return IntValue(); }

void PairedEvent::Reserved1() {}

std::int32_t PairedEvent::IntValue() const { return static_cast<std::int32_t>(value_bits); }
void PairedEvent::SetIntValue(std::int32_t number) { value_bits = static_cast<std::uint32_t>(number); }
float PairedEvent::FloatValue() const { return std::bit_cast<float>(value_bits); }
void PairedEvent::SetFloatValue(float number) { value_bits = std::bit_cast<std::uint32_t>(number); }

// IEEE 754 defines the conversion for every double: one beyond the largest float gives an infinity.
static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<double>::is_iec559);
void PairedEvent::SetFloatValue(double number) { SetFloatValue(static_cast<float>(number)); }

void PairedEvent::FillDisplayRecord(DisplayRecord& record) const {
  record = {};
  record.anchor_x = 0.5F;
  record.anchor_y = 0.5F;
}

void PairedEvent::ClearDisplayWords(DisplayWords& words) const { words.fill(0); }

void PairedEvent::Reserved2() {}
void PairedEvent::Reserved3() {}
int PairedEvent::Reserved4() const { return 0; }
bool PairedEvent::Reserved5() const { return true; }

std::uint32_t PairedEvent::Span() const { return end > start ? end - start : 0; }

}  // namespace CL
