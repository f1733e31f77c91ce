"""The wheel of the Python module, for `python3 -m build`: CMake builds it, and installs it to where it is packed from."""

import importlib.util
import os
import pathlib
import re
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

SOURCE = pathlib.Path(__file__).resolve().parent
VERSION = re.search(r"project\(Vor2 VERSION ([\d.]+)", (SOURCE / "CMakeLists.txt").read_text(encoding="utf-8"))[1]


class CMakeBuild(build_ext):
    def run(self):
        build = pathlib.Path(self.build_temp).resolve()
        options = [f"-DPython_EXECUTABLE={sys.executable}", "-DVOR2_PYTHON_INSTALL_DIR=."]
        # A wheel goes to machines that have no more than Python.
        for name, value in (("BUILD_TESTS", "OFF"), ("BUILD_PYTHON", "ON"), ("ASSIMP", "OFF")):
            options.append(f"-DVOR2_{name}={value}")
        if importlib.util.find_spec("pybind11"):
            import pybind11

            options.append(f"-Dpybind11_DIR={pybind11.get_cmake_dir()}")
        if shutil.which("ninja"):
            options.append("-GNinja")
        self.cmake("-S", SOURCE, "-B", build, "-DCMAKE_BUILD_TYPE=Release", "-DVOR2_UNITY_BUILD=ON", *options)
        self.cmake("--build", build, "--target", "vor2_python_package", f"-j{os.cpu_count()}")
        self.cmake("--install", build, "--component", "python", "--strip", "--prefix", pathlib.Path(self.build_lib).resolve())

    @staticmethod
    def cmake(*words):
        subprocess.run(["cmake", *map(str, words)], check=True)


setup(
    version=VERSION,
    packages=["vor2"],
    package_dir={"": "python"},
    ext_modules=[Extension("vor2._core", [])],
    cmdclass={"build_ext": CMakeBuild},
)
