"""Builds the package with CMake: the extension module, and the libraries beside it."""

import os
import pathlib
import subprocess
import sys

import setuptools
from setuptools.command.build_ext import build_ext

SOURCE = pathlib.Path(__file__).resolve().parents[1]


class CMakeBuild(build_ext):
    """Installs the components of the libraries and of the module into the wheel."""

    def build_extension(self, ext):
        package = pathlib.Path(self.get_ext_fullpath(ext.name)).resolve().parent
        build = pathlib.Path(self.build_temp).resolve()
        build.mkdir(parents=True, exist_ok=True)
        subprocess.run(["cmake", "-S", SOURCE, "-B", build, "-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_UNITY_BUILD=ON",
                        "-DCMAKE_UNITY_BUILD_BATCH_SIZE=0", "-DZUNA_BUILD_PYTHON=ON",
                        "-DZUNA_BUILD_TOOL=OFF", f"-DPython3_EXECUTABLE={sys.executable}", "-DZUNA_PYTHON_FOLDER=.",
                        "-DCMAKE_INSTALL_LIBDIR=zuna"], check=True)
        subprocess.run(["cmake", "--build", build, "--parallel", str(os.cpu_count()), "--target", "zuna_python"], check=True)
        for component in ("library", "toolkit", "python"):
            subprocess.run(["cmake", "--install", build, "--prefix", package.parent, "--component", component], check=True)
        for link in [path for path in package.glob("*.so*") if path.is_symlink()]:
            link.resolve().replace(link)  # a wheel has no symbolic links


setuptools.setup(ext_modules=[setuptools.Extension("zuna._zuna", [])], cmdclass={"build_ext": CMakeBuild},
                 options={"build": {"build_base": str(SOURCE / "build/python-wheel")}})
