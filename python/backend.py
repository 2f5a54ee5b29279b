"""Builds the wheel for pip, by CMake in a temporary folder; needs cmake, ninja, g++, pybind11 and Python's headers.

The library is the one that CMake finds, CMAKE_PREFIX_PATH=PREFIX; where there is none, the one of this tree is built,
which takes some minutes, and goes into the wheel.
"""
import base64
import hashlib
import os
import pathlib
import re
import subprocess
import sys
import sysconfig
import tempfile
import zipfile

NAME, VERSION = "kvlm", "5.2"
PYTHON = f"cp{sys.version_info.major}{sys.version_info.minor}"
TAG = "-".join([PYTHON, PYTHON, re.sub("[-.]", "_", sysconfig.get_platform())])
METADATA = f"""Metadata-Version: 2.1
Name: {NAME}
Version: {VERSION}
Summary: Linear algebra on stacks of small matrices
Requires-Python: >=3.9
Requires-Dist: numpy>=1.20
"""


def _build(build):
    """Builds in a folder; where there is what CMake installs of it for Python."""
    source = pathlib.Path(__file__).resolve().parent
    prefix = pathlib.Path(build) / "prefix"
    run = lambda *arguments: subprocess.run(["cmake", *map(str, arguments)], check=True)
    variants = ";".join(os.environ.get("KVLM_VARIANTS", "").split())
    options = ["-DCMAKE_BUILD_TYPE=Release", f"-DPython3_EXECUTABLE={sys.executable}", f"-DKVLM_VARIANTS={variants}"]
    run("-S", source, "-B", build, "-G", "Ninja", *options)
    run("--build", build, "--target", "kvlm_core")
    run("--install", build, "--component", "python", "--prefix", prefix)
    return prefix


def _write_about(folder):
    """The folder DIST-INFO of the wheel in `folder`; its name."""
    about = pathlib.Path(folder) / f"{NAME}-{VERSION}.dist-info"
    about.mkdir()
    (about / "METADATA").write_text(METADATA)
    (about / "WHEEL").write_text(f"Wheel-Version: 1.0\nGenerator: {NAME}\nRoot-Is-Purelib: false\nTag: {TAG}\n")
    return about.name


def prepare_metadata_for_build_wheel(metadata_directory, config_settings=None):
    return _write_about(metadata_directory)


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    wheel = f"{NAME}-{VERSION}-{TAG}.whl"
    with tempfile.TemporaryDirectory() as folder:
        prefix = _build(folder)
        record = prefix / _write_about(prefix) / "RECORD"
        paths = sorted(path for path in prefix.rglob("*") if path.is_file())
        files = {path.relative_to(prefix).as_posix(): path.read_bytes() for path in paths}
        lines = [f"{name},sha256={_digest(content)},{len(content)}\n" for name, content in files.items()]
        name = record.relative_to(prefix).as_posix()
        files[name] = "".join([*lines, f"{name},,\n"]).encode()
    with zipfile.ZipFile(os.path.join(wheel_directory, wheel), "w", zipfile.ZIP_DEFLATED) as archive:
        for name, content in files.items():
            archive.writestr(name, content)
    return wheel


def _digest(content):
    return base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=").decode()
