#include "cli/shows/timeline_losses.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace zuna_cli {

namespace {

std::string At(std::uint32_t time) { return " at " + std::to_string(time); }

std::string Text(const TL::Tempo& tempo) {
  return std::to_string(tempo.microseconds) + " us" + At(tempo.time);
}

std::string Text(const TL::BarsBeats& label) {
  return std::string("label \"") + label.bar_number() + '"' + At(label.time);
}

std::string Text(const TL::Key& key) {
  return "key " + std::to_string(key.key) + " mode " + std::to_string(key.mode) + At(key.time);
}

std::string Text(const TL::PageNumber& page) { return "page " + std::to_string(page.page) + At(page.time); }

std::string Text(const TL::Meter& meter) {
  return std::to_string(meter.numerator) + '/' + std::to_string(meter.denominator) + " with " +
         std::to_string(meter.clocks_per_click) + " clocks and " +
         std::to_string(meter.notated_32_per_quarter) + " 32nds" + At(meter.time);
}

auto Fields(const TL::Tempo& tempo) { return std::tuple(tempo.time, tempo.microseconds); }
auto Fields(const TL::BarsBeats& label) {
  return std::tuple(label.time, std::string(label.bar_number()), label.tag);
}
auto Fields(const TL::Key& key) { return std::tuple(key.time, key.key, key.mode); }
auto Fields(const TL::PageNumber& page) { return std::tuple(page.time, page.page); }
auto Fields(const TL::Meter& meter) {
  return std::tuple(meter.time, meter.numerator, meter.denominator, meter.clocks_per_click,
                    meter.notated_32_per_quarter);
}

template <class Entry>
std::vector<Entry> OnlyInFirst(const std::vector<Entry>& first, const std::vector<Entry>& second) {
  std::vector<Entry> rest;
  std::set_difference(first.begin(), first.end(), second.begin(), second.end(), std::back_inserter(rest),
                      [](const Entry& a, const Entry& b) { return Fields(a) < Fields(b); });
  return rest;
}

template <class Entry>
std::vector<Entry> Sorted(std::vector<Entry> list) {
  std::sort(list.begin(), list.end(), [](const Entry& a, const Entry& b) { return Fields(a) < Fields(b); });
  return list;
}

template <class Entry>
void AddListLosses(const std::vector<Entry>& before, const std::vector<Entry>& after, const std::string& kind,
                   const std::string& where, LossList& losses) {
  if (before == after) return;
  const std::vector<Entry> old_list = Sorted(before);
  const std::vector<Entry> new_list = Sorted(after);
  const std::vector<Entry> lost = OnlyInFirst(old_list, new_list);
  const std::vector<Entry> gained = OnlyInFirst(new_list, old_list);
  losses.Add(kind, kind + "s", lost.size(), [&] {
    const Entry& first = lost.front();
    const auto at_its_time = [&](const Entry& entry) { return entry.time == first.time; };
    auto found = std::find_if(gained.begin(), gained.end(), at_its_time);
    if (found == gained.end() && gained.size() == lost.size()) found = gained.begin();
    const std::string fate = found == gained.end() ? " is dropped" : " becomes " + Text(*found);
    return where + Text(first) + fate;
  });
  if (gained.size() > lost.size()) {
    losses.Add("additional " + kind, "additional " + kind + "s", gained.size() - lost.size(),
               [&] { return where + Text(gained.back()); });
  }
}

}  // namespace

void AddTimelineLosses(const TL::Timeline& before, const TL::Timeline& after, const std::string& where,
                       LossList& losses) {
  AddListLosses(before.tempos, after.tempos, "tempo", where, losses);
  AddListLosses(before.bars_beats, after.bars_beats, "bar label", where, losses);
  AddListLosses(before.keys, after.keys, "key", where, losses);
  AddListLosses(before.page_numbers, after.page_numbers, "page number", where, losses);
  AddListLosses(before.meters, after.meters, "meter", where, losses);
}

}  // namespace zuna_cli
