"""Builds the wheel for pip, by CMake in a temporary folder; needs cmake, ninja, g++, pybind11 and Python's headers.

The library is the one that CMake finds, CMAKE_PREFIX_PATH=PREFIX; where there is none, the one of this tree is built,
which takes some minutes, and goes into the wheel.
"""
import base64
import hashlib
import os
import pathlib
import subprocess
import sys
import sysconfig
import tempfile
import zipfile

NAME, VERSION = "kvlm", "5.2"
METADATA = f"""Metadata-Version: 2.1
Name: {NAME}
Version: {VERSION}
Summary: Linear algebra on stacks of small matrices
Requires-Python: >=3.9
Requires-Dist: numpy>=1.20
"""


def _build(folder):
    """What CMake installs for Python, below `folder`."""
    source = pathlib.Path(__file__).resolve().parent
    build = pathlib.Path(folder) / "build"
    prefix = pathlib.Path(folder) / "prefix"
    run = lambda *arguments: subprocess.run(["cmake", *map(str, arguments)], check=True)
    options = ["-DCMAKE_BUILD_TYPE=Release", f"-DPython3_EXECUTABLE={sys.executable}"]
    run("-S", source, "-B", build, "-G", "Ninja", *options)
    run("--build", build, "--target", "kvlm_core")
    run("--install", build, "--component", "python", "--prefix", prefix)
    return prefix


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    python = f"cp{sys.version_info.major}{sys.version_info.minor}"
    platform = sysconfig.get_platform().replace("-", "_").replace(".", "_")
    tag = f"{python}-{python}-{platform}"
    wheel = f"{NAME}-{VERSION}-{tag}.whl"
    about = f"{NAME}-{VERSION}.dist-info"
    with tempfile.TemporaryDirectory() as folder:
        prefix = _build(folder)
        files = {path.relative_to(prefix).as_posix(): path.read_bytes() for path in sorted(prefix.rglob("*.*"))}
    files[f"{about}/METADATA"] = METADATA.encode()
    files[f"{about}/WHEEL"] = f"Wheel-Version: 1.0\nGenerator: {NAME}\nRoot-Is-Purelib: false\nTag: {tag}\n".encode()
    record = "".join(f"{name},sha256={_digest(content)},{len(content)}\n" for name, content in files.items())
    files[f"{about}/RECORD"] = (record + f"{about}/RECORD,,\n").encode()
    with zipfile.ZipFile(os.path.join(wheel_directory, wheel), "w", zipfile.ZIP_DEFLATED) as archive:
        for name, content in files.items():
            archive.writestr(name, content)
    return wheel


def _digest(content):
    return base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=").decode()
