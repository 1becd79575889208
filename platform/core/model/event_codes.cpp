#include "codes/zuna_event_codes.h"

namespace codes {

const std::map<std::uint8_t, std::string> editNameByZunaEventCode = {
    {kVamp, "Vamp"},           {kRepeat, "Repeat"},         {kCut, "Cut"},
    {kTranspose, "Transpose"}, {kTempoScale, "TempoScale"}, {kMarker, "Marker"},
    {kClick, "Click"},         {kFermata, "Fermata"},       {kCaesura, "Caesura"},
};

}  // namespace codes
