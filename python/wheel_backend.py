"""Builds the wheel of the package with CMake (PEP 517), for `pip install .`.

The setting `build-dir` names a build tree, which is made if it isn't there: build/wheel by default. The
environment variable CMAKE_ARGS holds further arguments for its configuration.
"""

from __future__ import annotations

import base64
import hashlib
import os
import pathlib
import re
import shlex
import subprocess
import sys
import sysconfig
import tarfile
import tempfile
import zipfile

ROOT = pathlib.Path(__file__).resolve().parent.parent

#: Of the source distribution; what a user builds or keeps in the tree isn't one of them.
NO_SOURCES = {"build", ".git", "__pycache__"}

METADATA = """\
Metadata-Version: 2.1
Name: starsift
Version: {version}
Summary: Exact checks of solutions of integer linear problems, and searches for them
Requires-Python: >=3.9
Provides-Extra: pandas
Requires-Dist: pandas; extra == 'pandas'
Provides-Extra: figures
Requires-Dist: matplotlib; extra == 'figures'
Description-Content-Type: text/markdown

{guide}"""


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    """Writes the wheel and returns its name."""
    tree = _built(pathlib.Path((config_settings or {}).get("build-dir", ROOT / "build" / "wheel")))
    name = f"starsift-{_version()}-{_tag()}.whl"
    with tempfile.TemporaryDirectory() as staged:
        _run("cmake", "--install", tree, "--component", "wheel", "--prefix", staged, "--strip")
        files = dict(_staged_files(pathlib.Path(staged))) | _info_files()
        _write_wheel(pathlib.Path(wheel_directory, name), files)
    return name


def build_sdist(sdist_directory, config_settings=None):
    """Writes the archive of the sources and returns its name."""
    base = f"starsift-{_version()}"

    def kept(entry):
        return None if NO_SOURCES.intersection(pathlib.PurePath(entry.name).parts) else entry

    with tarfile.open(pathlib.Path(sdist_directory, f"{base}.tar.gz"), "w:gz") as archive:
        archive.add(ROOT, base, filter=kept)
        with tempfile.NamedTemporaryFile("w", encoding="utf-8") as info:
            info.write(_metadata())
            info.flush()
            archive.add(info.name, f"{base}/PKG-INFO")
    return f"{base}.tar.gz"


def _version():
    text = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    return re.search(r"^\s*VERSION (\d+\.\d+\.\d+)$", text, re.MULTILINE).group(1)


def _tag():
    """Of this interpreter and machine: the libraries below are those of the system."""
    python = f"cp{sys.version_info.major}{sys.version_info.minor}"
    platform = re.sub(r"[-.]", "_", sysconfig.get_platform())
    return f"{python}-{python}-{platform}"


def _metadata():
    guide = (ROOT / "docs" / "python.md").read_text(encoding="utf-8")
    return METADATA.format(version=_version(), guide=guide)


def _built(tree):
    if not (tree / "CMakeCache.txt").exists():
        _run(
            "cmake", "-S", ROOT, "-B", tree, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
            f"-DSTARSIFT_PYTHON={sys.executable}", *shlex.split(os.environ.get("CMAKE_ARGS", "")),
        )
    _run("cmake", "--build", tree, "--target", "starsift_python")
    return tree


def _run(*command):
    # What pip shows of a build that fails.
    subprocess.run([os.fspath(word) for word in command], check=True, stdout=sys.stderr)


def _staged_files(folder):
    """Paths in the wheel and contents; a shared library has the one name that the loader looks for."""
    paths = [path for path in folder.rglob("*") if path.is_file()]
    behind_links = {path.resolve() for path in paths if path.is_symlink()}
    for path in paths:
        if path.is_symlink() or path.resolve() not in behind_links:
            yield path.relative_to(folder).as_posix(), path.read_bytes()


def _info_files():
    wheel = f"Wheel-Version: 1.0\nGenerator: starsift\nRoot-Is-Purelib: false\nTag: {_tag()}\n"
    folder = f"starsift-{_version()}.dist-info"
    return {f"{folder}/METADATA": _metadata().encode(), f"{folder}/WHEEL": wheel.encode()}


def _write_wheel(path, files):
    record = f"starsift-{_version()}.dist-info/RECORD"
    lines = []
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, content in sorted(files.items()):
            digest = base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=").decode()
            lines.append(f"{name},sha256={digest},{len(content)}\n")
            archive.writestr(name, content)
        archive.writestr(record, "".join(lines) + f"{record},,\n")
