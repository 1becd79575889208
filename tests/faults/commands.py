"""Every command of zuna-convert with arguments, in a folder of inputs that make_inputs() fills. A new command joins by a line."""

import dataclasses
import json
import os
import pathlib
import shutil
import subprocess

EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples"
SEASON = ("a.logdata", "a.showdata", "below/b.logdata", "below/b.showdata")
BOTH = ("new.logdata", "new.showdata")
SEVERAL = "4"
EXPORTED = ("songs/1 Auld Lang Syne.mid", "songs/2 Greensleeves.mid", "songs/2a Scarborough Fair.mid")


@dataclasses.dataclass(frozen=True)
class Command:
    """A command line that goes through. It runs in the folder of inputs."""

    arguments: tuple
    outputs: tuple = ()     # the files that it writes
    stdin: str = ""         # the input that it reads there
    in_place: bool = False  # the outputs are inputs as well, and there is no --force
    is_many: bool = False   # each input is converted for itself: some outputs may be written where others fail
    report: str = ""        # the file that gets a line for each input; the command goes on where it has stopped

    def __str__(self):
        return " ".join(self.arguments)

    @property
    def writes(self):
        return bool(self.outputs)

    @property
    def has_threads(self):
        """Whether the order of its calls differs from run to run."""
        return self.arguments[-2:] == ("-j", SEVERAL)


def one_file(*arguments, stdin=""):
    """A command that writes one file."""
    return Command((*arguments, "-o", "out"), ("out",), stdin)


def many(*arguments, **more):
    """A command on many inputs, with one worker and with several."""
    return tuple(Command((*arguments, "-j", workers), is_many=True, **more) for workers in ("1", SEVERAL))


def below(folder, names):
    return tuple(f"{folder}/{name}" for name in names)


def with_backups(names):
    return (*names, *(f"{name}.~1~" for name in names))


COMMANDS = (
    one_file("up", "old.showdata", "--companion", "old.logdata"),
    one_file("up", "old.logdata", "--companion", "old.showdata"),
    one_file("down", "new.showdata"),
    one_file("down", "new.logdata"),
    one_file("convert", "new.showdata", "--to", "1.0"),
    one_file("convert", "new.showdata", "--to", "2.0"),
    one_file("convert", "text.showdata", "--to", "1.1"),
    one_file("convert", "new.logdata", "--to", "2.0"),
    Command(("copy-fermatas", "fermatas.logdata", "new.logdata"), with_backups(("new.logdata",)), in_place=True),
    one_file("copy-fermatas", "fermatas.logdata", "new.logdata"),
    one_file("encrypt", "plain.json"),
    one_file("encrypt", "-", stdin="plain.json"),
    one_file("decrypt", "new.showdata"),
    one_file("dump", "new.showdata"),
    one_file("dump", "old.logdata"),
    Command(("dump", "--offsets", "old.showdata")),
    Command(("dump", "--offsets", "--json", "new.logdata")),
    one_file("build", "plain.json"),
    one_file("build", "-", "--to", "1.1", stdin="plain.json"),
    Command(("edit", "new.showdata"), ("new.showdata", "new.showdata.~1~"), in_place=True),
    one_file("rescue", "new.showdata"),
    one_file("rescue", "old.showdata", "--json"),
    one_file("midi", "import", "1.mid", "2.mid"),
    Command(("midi", "export", "new.showdata", "--out-dir", "songs"), EXPORTED),
    Command(("midi", "export", "old.showdata", "--out-dir", "songs"), EXPORTED),
    Command(("convert", "-", "-o", "-", "--to", "1.1"), stdin="new.showdata"),
    Command(("decrypt", "new.logdata", "-o", "-")),
    Command(("up", "old.showdata", "--out-dir", "songs", "-j", "1"), ("songs/old.showdata",)),
    Command(("down", "new.showdata", "-n", "--out-dir", "songs")),
    Command(("check", "old.showdata", "new.logdata", "--to", "1.2", "-j", "1")),
    Command(("diff", "old.showdata", "new.showdata")),
    Command(("diff", "--json", "new.logdata", "old.logdata")),
    Command(("info", "old.showdata", "new.logdata", "-j", "1")),
    Command(("info", "--json", "new.showdata", "text.showdata")),
    Command(("print", "new.logdata")),
    Command(("print", "old.showdata")),
    one_file("view", "old.showdata", "old.logdata"),
    one_file("view", "new.showdata", "new.logdata", "--diff", "old.showdata", "--diff", "old.logdata"),
    one_file("view", "new.showdata", "new.logdata", "--losses", "0.0"),
    Command(("list", ".")),
    *many("up", "season", "-r", "--out-dir", "out", "--report", "report", "--resume", outputs=below("out", SEASON),
          report="report"),
    *many("up", "season", "-r", "--out-dir", "done", "--report", "done.json", "--resume", report="done.json"),
    *many("up", "season", "-r", "--in-place", outputs=with_backups(below("season", SEASON)), in_place=True),
    *many("down", *BOTH, "--out-dir", "out", outputs=below("out", BOTH)),
    *many("convert", *BOTH, "--to", "2.0", "--out-dir", "out", "--report", "report", "--resume",
          outputs=below("out", BOTH), report="report"),
    *many("convert", *BOTH, "--to", "1.1", "--in-place", outputs=with_backups(BOTH), in_place=True),
    *many("check", "season", "-r", "--to", "1.2"),
    Command(("explain",)),
    Command(("completion", "zsh")),
    Command(("help", "midi", "import")),
    Command(("--help",)),
    Command(("--version",)),
)


def environment():
    """The variables for a command that runs in the folder of inputs."""
    return {**os.environ, "ZUNA_KEY_FILE": "key", "EDITOR": "sed -i s/Greensleeves/Changed/"}


def make_inputs(tool, folder):
    """Fills an empty folder, which may be copied and moved. Commands change no other file of it than their outputs."""
    folder = pathlib.Path(folder)

    def run(*arguments, **options):
        return subprocess.run([tool, *arguments], cwd=folder, env=environment(), check=True, capture_output=True,
                              **options).stdout

    def as_text(name):
        run("convert", name, "-o", "text", "--to", "2.0", "--force")
        return run("decrypt", "text", "-o", "-")

    (folder / "songs").mkdir()
    shutil.copyfile(EXAMPLES / "three-tunes.key", folder / "key")
    (folder / "key").chmod(0o600)
    for kind in ("showdata", "logdata"):
        shutil.copyfile(EXAMPLES / f"three-tunes-0.0.{kind}", folder / f"old.{kind}")
        shutil.copyfile(EXAMPLES / f"three-tunes-1.2.{kind}", folder / f"new.{kind}")
    (folder / "season" / "below").mkdir(parents=True)
    for name in SEASON:
        shutil.copyfile(folder / f"old{pathlib.Path(name).suffix}", folder / "season" / name)
    run("up", "season", "-r", "--out-dir", "done", "--report", "done.json")
    for number, path in enumerate(sorted((EXAMPLES / "midi").iterdir())[:2], 1):
        shutil.copyfile(path, folder / f"{number}.mid")
    (folder / "plain.json").write_bytes(as_text("new.showdata"))
    run("encrypt", "plain.json", "-o", "text.showdata")
    log = json.loads(as_text("new.logdata"))
    for song in log["songLogs"]:
        song["fermatas"] = [{"start": 480, "end": 960, "label": "", "value": 2}]
    run("encrypt", "-", "-o", "fermatas.logdata", input=json.dumps(log).encode())
    (folder / "text").unlink()
