#include <iostream>
#include <memory>

#include "tests/faults/in_process/calls.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/sample_models.h"
#include "tests/support/temporary_folder.h"
#include "toolkit/batch/inputs.h"
#include "toolkit/checking/checking.h"
#include "toolkit/comparison/comparison.h"
#include "toolkit/comparison/difference_lines.h"
#include "toolkit/comparison/loss_text.h"
#include "toolkit/comparison/nouns.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/conversion/copy_fermatas.h"
#include "toolkit/document/field_list.h"
#include "toolkit/document/open.h"
#include "toolkit/document/summary.h"
#include "toolkit/document/text_form.h"
#include "toolkit/document/write.h"
#include "toolkit/error.h"
#include "toolkit/key_file.h"
#include "toolkit/midi/file_names.h"
#include "toolkit/midi/songs.h"
#include "toolkit/rescue/rescue.h"
#include "toolkit/smf/file.h"
#include "toolkit/view/page.h"
#include "toolkit/words.h"
#include "zuna_sec/errors.h"

namespace public_calls {

namespace {

using zuna_test::Encrypted;
using zuna_test::kKey;
using zuna_toolkit::Document;
using zuna_toolkit::OpenedFile;
using Bytes = std::vector<std::uint8_t>;
using SharedDocument = std::shared_ptr<const Document>;

const std::string kLong = "a text that does not fit into a string object";
constexpr cmn::FileVersion kText{2, 0};
constexpr cmn::FileVersion kBinary{1, 2};

std::string TextOf(const Document& document) {
  const auto bytes = zuna_toolkit::CipherStreamOf(document, kKey)->GetEncryptedBytes();
  return {bytes.begin(), bytes.end()};
}

OpenedFile Opened(const Bytes& bytes) { return OpenedFile::FromBytes(bytes, kLong, kKey); }

SharedDocument Read(const Bytes& bytes) {
  OpenedFile file = Opened(bytes);
  return std::make_shared<const Document>(zuna_toolkit::ReadDocument(file));
}

/// A file of each kind and age.
struct Samples {
  Bytes legacy_show = Encrypted(zuna_test::Written(zuna_test::SampleLegacyShow()));
  Bytes legacy_log = Encrypted(zuna_test::Written(zuna_test::SampleLegacyLog()));
  Bytes show = Encrypted(zuna_test::WrittenAt(zuna_test::SampleShow(), kBinary));
  Bytes log = Encrypted(zuna_test::WrittenAt(zuna_test::SampleLog(), kText));

  std::vector<Bytes> all() const { return {legacy_show, legacy_log, show, log}; }
};

void AddDocuments(Calls& calls, const Samples& samples) {
  const auto folder = std::make_shared<zuna_test::TemporaryFolder>();
  const std::string out = *folder / "an output whose path does not fit into a string object";
  for (const Bytes& bytes : samples.all()) {
    const std::string in = folder->Put("in " + std::to_string(bytes.size()), {bytes.begin(), bytes.end()});
    const SharedDocument document = Read(bytes);
    calls.Add("OpenDocument", [=, kept = folder] { return TextOf(zuna_toolkit::OpenDocument(in, kKey)); });
    calls.Add("ReadDocument", [=, kept = folder] {
      OpenedFile file(in, kKey);
      return TextOf(zuna_toolkit::ReadDocument(file));
    });
    calls.Add("Detect", [=] {
      OpenedFile file = Opened(bytes);
      return zuna_toolkit::TypeText(zuna_toolkit::Detect(file)) +
             std::to_string(zuna_toolkit::IsEncrypted(bytes));
    });
    calls.Add("WriteDocument", [=, kept = folder] {
      zuna_toolkit::WriteDocument(*document, out, kKey);
      return ContentOf(out);
    });
    calls.Add("WriteTextForm, ReadTextForm", [=] {
      const std::string text =
          public_calls::TextOf([&](std::ostream& os) { zuna_toolkit::WriteTextForm(*document, os); });
      return TextOf(zuna_toolkit::ReadTextForm(text, kLong)) + zuna_toolkit::LeftOutOfText(*document);
    });
    calls.Add("ListFields", [=] {
      OpenedFile file = Opened(bytes);
      std::string paths;
      zuna_toolkit::ListFields(zuna_toolkit::FieldSourceOf(file), [&](const cmn::PlacedField& field) {
        paths.append(field.record).append(field.key) += std::to_string(field.end);
      });
      return paths;
    });
    calls.Add("Document",
              [=] { return TextOf(Document(document->model(), document->type().version, kLong)); });
    calls.Add("SummariseWhole",
              [=] { return zuna_toolkit::SummariseWhole(*document).show_name.value_or(""); });
    calls.Add("SummariseSongs", [=] {
      std::string names;
      zuna_toolkit::SummariseSongs(*document, [&](const auto& song) { names += song.name; });
      return names;
    });
    calls.Add("Check", [=] {
      std::string findings(CodeText(zuna_toolkit::FindingCode::kTempoZero));
      zuna_toolkit::Check(*document, [&](const auto& finding) { findings += finding.problem; });
      return findings + std::to_string(zuna_toolkit::FindingExplanations().size()) +
             std::to_string(static_cast<int>(SeverityOf(zuna_toolkit::FindingCode::kTempoZero)));
    });
    if (!document->type().is_log()) {
      calls.Add("ShowPage", [=] {
        zuna_toolkit::PageContent content;
        content.earlier_show = document.get();
        return zuna_toolkit::ShowPage(*document, content);
      });
      calls.Add("SongPicture", [=] {
        zuna_toolkit::PageContent content;
        zuna_toolkit::SummariseSongs(*document, [&](const auto& song) { content.song = song.number; });
        return zuna_toolkit::SongPicture(*document, content);
      });
    }
    calls.Add("CurrentForm", [=] { return TextOf(zuna_toolkit::CurrentForm(*document)); });
  }
  calls.Add("RequireCorrectText", [text = zuna_test::Decrypted(samples.log)] {
    zuna_toolkit::RequireCorrectText({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()},
                                     kLong);
    return std::string();
  });
}

void AddKeyFiles(Calls& calls) {
  calls.Add("ParseKeyFile", [] {
    const zuna_toolkit::SecretKey key = zuna_toolkit::ParseKeyFile("key = 20\niv = 21\n", kLong, false);
    return std::string(key.material().key.begin(), key.material().key.end());
  });
}

void AddRescues(Calls& calls, const Samples& samples) {
  for (const Bytes& bytes : samples.all()) {
    calls.Add("Rescue", [damaged = Bytes(bytes.begin(), bytes.end() - 1)] {
      const zuna_toolkit::Rescued rescued = zuna_toolkit::Rescue(damaged, kLong, kKey);
      return TextOf(rescued.document) + std::to_string(rescued.report.saved()) +
             std::to_string(rescued.report.complete());
    });
  }
}

void AddConversions(Calls& calls, const Samples& samples) {
  const SharedDocument legacy_show = Read(samples.legacy_show);
  const SharedDocument legacy_log = Read(samples.legacy_log);
  const SharedDocument show = Read(samples.show);
  const SharedDocument log = Read(samples.log);
  calls.Add("Up, show", [=] {
    OpenedFile file = Opened(samples.legacy_log);
    return TextOf(
        zuna_toolkit::Up(*legacy_show, zuna_toolkit::ReadCompanion(file, cmn::FileKind::kShow), kText));
  });
  calls.Add("Up, log", [=] {
    OpenedFile file = Opened(samples.legacy_show);
    return TextOf(
        zuna_toolkit::Up(*legacy_log, zuna_toolkit::ReadCompanion(file, cmn::FileKind::kLog), kBinary));
  });
  calls.Add("CompanionFrom", [=] { return zuna_toolkit::CompanionFrom(*legacy_log).show_name; });
  calls.Add("FitOf", [=] {
    const zuna_toolkit::CompanionFit fit =
        zuna_toolkit::FitOf(*legacy_log, zuna_toolkit::CompanionFrom(*legacy_show));
    return std::to_string(fit.unknown_songs.size()) + ' ' + std::to_string(fit.other_songs.size());
  });
  calls.Add("CopyFermatas", [=] { return TextOf(zuna_toolkit::CopyFermatas(*log, *log).document); });
  for (const SharedDocument& document : {show, log}) {
    calls.Add("Convert", [=] { return TextOf(zuna_toolkit::Convert(*document, kText)); });
    calls.Add("Down", [=] { return TextOf(zuna_toolkit::Down(*document)); });
  }
  calls.Add("Require", [=] {
    zuna_toolkit::RequireShow(show->type(), kLong);
    zuna_toolkit::RequireCurrent(show->type(), kLong);
    zuna_toolkit::RequireLegacy(legacy_show->type(), kLong);
    return std::string();
  });
}

void AddComparisons(Calls& calls, const Samples& samples) {
  for (const Bytes& bytes : {samples.show, samples.log}) {
    const SharedDocument current = Read(bytes);
    const auto legacy = std::make_shared<const Document>(zuna_toolkit::Down(*current));
    const auto up = std::make_shared<const Document>(zuna_toolkit::CurrentForm(*legacy));
    const auto text = [](const auto& compare) {
      std::string list;
      zuna_toolkit::DifferenceGroups groups;
      compare([&](const zuna_toolkit::Difference& difference) {
        list += zuna_toolkit::CodeText(difference) + difference.before;
        if (zuna_toolkit::IsHarmless(difference)) list += ", harmless";
        groups.Add(difference);
      });
      return list + std::to_string(groups.groups().size() + zuna_toolkit::LossExplanations().size());
    };
    calls.Add("DifferenceLines, NounOf", [=] {
      std::string list;
      zuna_toolkit::DifferenceLines lines([&](const auto& line) { list += line.song + line.text; });
      zuna_toolkit::Compare(*current, *up, [&](const zuna_toolkit::Difference& difference) {
        list += zuna_toolkit::NounOf(difference.subject).one;
        lines.Add(difference);
      });
      lines.Finish();
      return list;
    });
    calls.Add("KindLine, KindsText, OwnLine, TotalLine, IsInCompanion", [=] {
      std::string list;
      zuna_toolkit::LossesOfDown(*current, *legacy, [&](const zuna_toolkit::Difference& loss) {
        const zuna_toolkit::LossKind kind{zuna_toolkit::CodeText(loss),
                                          loss.subject,
                                          loss.action,
                                          false,
                                          zuna_toolkit::IsInCompanion(loss.subject),
                                          1};
        list += zuna_toolkit::KindLine(kind, loss) + zuna_toolkit::KindsText({kind}) +
                zuna_toolkit::OwnLine(loss) + zuna_toolkit::TotalLine(kind);
      });
      return list;
    });
    calls.Add("LossesOfDown", [=] {
      return text([&](const auto& sink) { zuna_toolkit::LossesOfDown(*current, *legacy, sink); });
    });
    calls.Add("LossesOfUp",
              [=] { return text([&](const auto& sink) { zuna_toolkit::LossesOfUp(*legacy, *up, sink); }); });
    calls.Add("Compare",
              [=] { return text([&](const auto& sink) { zuna_toolkit::Compare(*current, *up, sink); }); });
    calls.Add("Compare", [=] { return std::to_string(zuna_toolkit::Compare(*current, *up).size()); });
    calls.Add("Compare, IsTextForm, ReadTextForm", [=] {
      const std::string form =
          public_calls::TextOf([&](std::ostream& os) { zuna_toolkit::WriteTextForm(*legacy, os); });
      OpenedFile before = Opened(Encrypted(form));
      OpenedFile after = Opened(Encrypted(form + ' '));
      return text([&](const auto& sink) { zuna_toolkit::Compare(before, after, sink); }) +
             (zuna_toolkit::IsTextForm(before) ? TextOf(zuna_toolkit::ReadTextForm(before)) : "");
    });
  }
}

/// Voices whose notes moved, so that they are aligned.
void AddNoteComparison(Calls& calls) {
  const auto show = [](std::uint32_t shift) {
    zuna_midi::ShowData model;
    const auto song = std::make_shared<zuna_midi::SongData>("1", kLong, std::uint16_t{480}, 1920U);
    const auto voice = std::make_shared<zuna_midi::VoiceTrack>();
    for (std::uint32_t i = 0; i < 6; ++i) {
      const auto pitch = static_cast<std::uint8_t>(60 + i);
      const std::uint32_t time = i * 480 + i % 3 * shift;
      voice->messages.emplace_back(time, std_midi::VoiceMessage(0x90, pitch, 1));
      voice->messages.emplace_back(time + 9, std_midi::VoiceMessage(0x80, pitch, 0));
    }
    voice->messages.emplace_back(shift, std_midi::VoiceMessage(0xC0, 1, 0));
    song->voice_data->AddTrack(voice);
    model.AddSongData(song);
    return std::make_shared<const Document>(model, kBinary, kLong);
  };
  calls.Add("Compare", [before = show(0), after = show(7)] {
    return std::to_string(zuna_toolkit::Compare(*before, *after).size());
  });
}

void AddMidi(Calls& calls) {
  const auto song = zuna_test::SampleShow().songs().at("2b");
  zuna_toolkit::midi::Report exported;
  const auto file =
      std::make_shared<zuna_toolkit::smf::File>(zuna_toolkit::midi::ExportSong(*song, exported));
  const std::string written = zuna_toolkit::smf::Write(*file);
  calls.Add("ExportSong", [song] {
    zuna_toolkit::midi::Report report;
    return std::to_string(zuna_toolkit::midi::ExportSong(*song, report).tracks.size()) +
           report.not_kept.ToString();
  });
  calls.Add("ImportSong", [file] {
    zuna_toolkit::midi::Report report;
    return zuna_toolkit::midi::ImportSong(*file, "12a", kLong, report)->song_name;
  });
  calls.Add("smf::Write", [file] { return zuna_toolkit::smf::Write(*file); });
  calls.Add("smf::Read", [bytes = Bytes(written.begin(), written.end())] {
    zuna_toolkit::smf::ReadNotes notes;
    return zuna_toolkit::smf::Write(zuna_toolkit::smf::Read(bytes, notes));
  });
  calls.Add("FileNames", [] {
    zuna_toolkit::midi::FileNames names;
    return names.Make("12a", kLong) + names.Make("12A", kLong);
  });
}

void AddInputs(Calls& calls) {
  const auto folder = std::make_shared<zuna_test::TemporaryFolder>();
  folder->Put("a show whose path does not fit into a string object.showdata", "");
  calls.Add("FindInputs", [folder] {
    const std::vector<zuna_toolkit::Input> found =
        zuna_toolkit::FindInputs({folder->path().string(), kLong}, {true, kLong});
    return found.empty() ? kLong : found.back().path;
  });
  calls.Add("names of inputs", [] {
    return zuna_toolkit::OtherKindPath(kLong + ".logdata").value() +
           (zuna_toolkit::IsShowOrLogName(kLong) ? "a show" : "") +
           (zuna_toolkit::IsInShard(kLong, {}) ? "all" : "");
  });
}

void AddWords(Calls& calls) {
  calls.Add("Counted", [] { return zuna_toolkit::Counted(2, kLong, kLong); });
  calls.Add("AppendListed", [] {
    std::string list;
    zuna_toolkit::AppendListed(list, kLong);
    zuna_toolkit::AppendListed(list, kLong);
    return list;
  });
  calls.Add("LowerCase", [] { return zuna_toolkit::LowerCase(kLong); });
  calls.Add("Tally", [] {
    zuna_toolkit::Tally tally;
    tally.Add(kLong, kLong);
    tally.Add(kLong + "2", kLong);
    return tally.ToString();
  });
  calls.Add("Error", [] {
    zuna_toolkit::ErrorParts parts;
    parts.problem = kLong;
    using zuna_toolkit::Error;
    constexpr auto kCode = zuna_toolkit::ErrorCode::kBadContent;
    return std::string(Error(kCode, parts).WithFile(kLong).what()) + Error(kCode, parts, kLong).what() +
           Error(kCode, kLong, kLong, kLong).what();
  });
  calls.Add("CodeOf", [error = zuna_sec::WrongKeyError(kLong, kLong, kLong)] {
    const zuna_toolkit::ErrorCode code = zuna_toolkit::CodeOf(error);
    return std::string(CodeText(code)) + std::string(zuna_toolkit::ErrorExplanations().front().code) +
           std::string(CodeText(zuna_toolkit::CodeOfSystemError(ENOENT))) +
           (zuna_toolkit::KindOf(code) == zuna_toolkit::ErrorKind::kWrongKey ? "" : "of another kind") +
           (zuna_toolkit::MayRescueHelp(code) ? "of damage" : "");
  });
}

}  // namespace

Calls OfTheToolkit() {
  Calls calls;
  const Samples samples;
  AddDocuments(calls, samples);
  AddKeyFiles(calls);
  AddRescues(calls, samples);
  AddConversions(calls, samples);
  AddComparisons(calls, samples);
  AddNoteComparison(calls);
  AddMidi(calls);
  AddInputs(calls);
  AddWords(calls);
  return calls;
}

}  // namespace public_calls
