"""A folder that is a Debian system with nothing but dpkg's records and chosen installed packages of this machine."""

import os
import pathlib
import re
import shutil
import subprocess

DPKG = pathlib.Path("var/lib/dpkg")
SHELL = ("coreutils", "dash")  # which scripts of packages take for granted
OWN = ("libzuna-format-converter", "zuna-convert", "python3-zuna")


def run(*command, **options):
    try:
        return subprocess.run([str(word) for word in command], check=True, capture_output=True, text=True, **options).stdout
    except subprocess.CalledProcessError as error:
        error.add_note(error.stdout + error.stderr)
        raise


class CleanRoot:
    """Needs root, or a user namespace in which one is root."""

    def __init__(self, folder, archives):
        """Makes the system of the packages that the archives depend on, and what those depend on."""
        self.folder = pathlib.Path(folder)
        for place in (DPKG / "info", DPKG / "updates", "usr/bin", "usr/lib", "usr/lib64", "usr/sbin", "tmp"):
            (self.folder / place).mkdir(parents=True)
        for link in ("bin", "lib", "lib64", "sbin"):
            (self.folder / link).symlink_to(f"usr/{link}")
        shutil.copy("/" / DPKG / "info/format", self.folder / DPKG / "info")

        required = with_dependencies([*SHELL, *(name for archive in archives for name in depended_on(["dpkg-deb"], archive))])
        (self.folder / DPKG / "status").write_text("".join(run("dpkg-query", "--status", name) + "\n" for name in required))
        for name in required:
            self.add_files(name)
        self.add_libraries_by_choice()

    def add_files(self, name):
        """Everything of a package but its data for people, and the list of it."""
        for path in run("dpkg-query", "--listfiles", name).splitlines():
            source, target = pathlib.Path(path), self.folder / path[1:]
            if not path.startswith("/") or path.startswith("/usr/share/") or source.is_dir():
                continue
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(source, target, follow_symlinks=False)
        for listed in pathlib.Path("/", DPKG, "info").glob("*.list"):
            if re.fullmatch(re.escape(name) + r"(:\w+)?\.list", listed.name):
                shutil.copy(listed, self.folder / DPKG / "info")

    def add_libraries_by_choice(self):
        """The links to one of several libraries of one name, which the scripts of their packages have made."""
        (self.folder / "etc/alternatives").mkdir(parents=True, exist_ok=True)
        for name in os.listdir("/etc/alternatives"):
            chosen = pathlib.Path("/etc/alternatives", name)
            if not name.startswith("lib") or not (self.folder / os.readlink(chosen)[1:]).exists():
                continue
            (self.folder / "etc/alternatives" / name).symlink_to(os.readlink(chosen))
            link = re.search(r"^Link: /(.*)$", run("update-alternatives", "--query", name), re.MULTILINE)
            (self.folder / link[1]).symlink_to(chosen)

    def dpkg(self, *arguments):
        return run("dpkg", f"--root={self.folder}", "--log=/dev/null", *arguments, env={**os.environ, "LC_ALL": "C"})

    def refused_by_dpkg(self, *arguments):
        """What dpkg says as it refuses."""
        try:
            self.dpkg(*arguments)
        except subprocess.CalledProcessError as error:
            return error.stderr
        raise AssertionError(f"dpkg {arguments} is not refused")

    def run(self, *command):
        """Runs a program of the system, which sees nothing else."""
        return run("chroot", self.folder, *command, env={"PATH": "/usr/sbin:/usr/bin", "LC_ALL": "C.UTF-8"})

    def files(self):
        """The paths of the system, without dpkg's records and what Python compiles of other packages."""
        paths = (path.relative_to(self.folder) for path in self.folder.rglob("*"))
        return {path for path in paths if DPKG not in (path, *path.parents) and
                ("__pycache__" not in path.parts or "zuna" in path.parts)}


def depended_on(query, package):
    """The names of the packages that a package depends on, the first one of alternatives, without our own."""
    shown = run(*query, "--showformat", "${Pre-Depends},${Depends}", "--show", package)
    names = [re.match(r"[a-z0-9.+-]*", one.strip())[0] for one in shown.split(",")]
    return [name for name in names if name and not name.startswith(OWN)]


def with_dependencies(names):
    found, left = set(), list(names)
    while left:
        name = left.pop()
        if name not in found:
            found.add(name)
            left += depended_on(["dpkg-query"], name)
    return sorted(found)
