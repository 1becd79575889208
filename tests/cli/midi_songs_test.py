"""Real songs, from MIDI into a show of every version, down to format 0.0, up again and back to MIDI.

midicsv, which shares no code with the tool, reads the files that went in and those that came out: every channel
message with its time comes out as it went in. mido, where it is installed, has to read the same in what came out.
"""

import collections
import glob
import os
import subprocess
import unittest

from tool import ToolTest, legacy_log

try:
    import mido
except ImportError:
    mido = None

SONGS = sorted(glob.glob("/usr/share/games/openttd/baseset/openmsx/*.mid"))
SONG_COUNT = 31  # of the package openttd-openmsx
CHANNEL_MESSAGES = {"Note_off_c", "Note_on_c", "Poly_aftertouch_c", "Control_c", "Program_c",
                    "Channel_aftertouch_c", "Pitch_bend_c"}
TIMELINE = {"Tempo": (500000,), "Time_signature": (4, 2, 24, 8), "Key_signature": None}  # what holds at first
PERCUSSION = 9

# A track: its name, its messages (time, kind, channel, data…) and the time of its end.
Track = collections.namedtuple("Track", "name messages end")


class Song:
    """A MIDI file as midicsv reads it."""

    def __init__(self, path):
        self.timeline = {kind: [] for kind in TIMELINE}
        self.tracks = []
        listing = subprocess.run(["midicsv", path], capture_output=True, check=True).stdout.decode("latin-1")
        for line in listing.splitlines():
            fields = line.split(", ", 3)
            self.add(int(fields[1]), fields[2], fields[3] if len(fields) > 3 else "")

    def add(self, time, kind, data):
        if kind == "Start_track":
            self.tracks.append(Track([], [], []))
        elif kind in CHANNEL_MESSAGES:
            self.tracks[-1].messages.append((time, kind, *map(int, data.split(", "))))
        elif kind == "Title_t":
            self.tracks[-1].name.append(data.strip('"'))
        elif kind == "End_track":
            self.tracks[-1].end.append(time)
        elif kind in TIMELINE:
            values = tuple(int(value) if value.lstrip("-").isdigit() else value for value in data.split(", "))
            self.timeline[kind].append((time, values))

    def voices(self):
        """The messages of every channel of every track, tracks in order and channels ascending."""
        for track in self.tracks:
            for channel in sorted({message[2] for message in track.messages}):
                yield channel, [message for message in track.messages if message[2] == channel]

    def changes(self):
        """Tempos, meters and keys by time: of several at one time the last one."""
        result = {}
        for kind, first in TIMELINE.items():
            result[kind] = {} if first is None else {0: first}
            result[kind].update(sorted(self.timeline[kind], key=lambda change: change[0]))
        return result

    def length(self):
        return max(track.end[0] for track in self.tracks)


def on_channel(messages, channel):
    return [(time, kind, channel, *data) for time, kind, _, *data in messages]


def after_legacy(voices):
    """What format 0.0 makes of voices: an id for each, all percussion under one, the channel out of the id."""
    pool = (number for number in range(1, 256) if number % 16 != PERCUSSION)
    by_id = collections.defaultdict(list)
    for channel, messages in voices:
        track_id = PERCUSSION if channel == PERCUSSION else next(pool)
        by_id[track_id] += on_channel(messages, track_id % 16)
    # A MIDI track is in order of time, and percussion of several tracks was one track after the other.
    return [sorted(by_id[track_id], key=lambda message: message[0]) for track_id in sorted(by_id)]


class SongsTest(ToolTest):
    def setUp(self):
        super().setUp()
        self.assertEqual(len(SONGS), SONG_COUNT, "install openttd-openmsx")
        self.songs = [Song(path) for path in SONGS]
        self.assertGreater(sum(len(track.messages) for song in self.songs for track in song.tracks), 100000)

    def import_songs(self, version):
        self.run_tool("midi", "import", *SONGS, "-o", version, "--to", version)

    def export(self, show):
        """The songs of a show as midicsv reads them, and the paths of their files."""
        folder = self.path(show + ".mid")
        os.mkdir(folder)
        self.run_tool("midi", "export", show, "--out-dir", folder)
        paths = sorted(glob.glob(folder + "/*.mid"), key=lambda path: int(os.path.basename(path).split()[0]))
        self.assertEqual(len(paths), SONG_COUNT)
        return [Song(path) for path in paths], paths

    def require_same(self, songs, expected_voices):
        for path, before, after in zip(SONGS, self.songs, songs):
            with self.subTest(song=os.path.basename(path)):
                self.assertEqual([track.messages for track in after.tracks[1:]], expected_voices(before))
                self.assertEqual(after.changes(), before.changes())
                self.assertEqual(after.length(), before.length())

    def test_every_version_gives_back_the_songs(self):
        for version in ("1.0", "1.1", "1.2", "2.0"):
            self.import_songs(version)
            songs, _ = self.export(version)
            self.require_same(songs, lambda song: [messages for _, messages in song.voices()])

    def test_format_0_0_gives_back_the_songs_on_the_channels_of_its_track_ids(self):
        self.write("log", legacy_log())
        for version in ("1.0", "1.1", "1.2", "2.0"):
            self.import_songs(version)
            self.run_tool("down", version, "-o", "legacy", "--force")
            self.run_tool("up", "legacy", "-o", version + ".up", "--to", version, "--companion", "log")
            songs, _ = self.export(version + ".up")
            self.require_same(songs, lambda song: after_legacy(song.voices()))

    @unittest.skipIf(mido is None, "mido is not installed")
    def test_another_reader_reads_the_same(self):
        self.import_songs("1.2")
        _, paths = self.export("1.2")
        for before, after in zip(SONGS, paths):
            self.assertEqual(mido_voices(after), mido_voices(before), before)


def mido_voices(path):
    """The messages of every channel of every track, as mido reads them."""
    voices = []
    for track in mido.MidiFile(path).tracks:
        channels = collections.defaultdict(list)
        time = 0
        for message in track:
            time += message.time
            if not message.is_meta and message.type != "sysex":
                channels[message.channel].append(message.copy(time=time))
        voices += [channels[channel] for channel in sorted(channels)]
    return voices


if __name__ == "__main__":
    unittest.main()
