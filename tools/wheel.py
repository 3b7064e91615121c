#!/usr/bin/env python3
"""tools/wheel.py PACKAGE LIBRARY INTO - packs the Python package and the library into a wheel

The wheel serves every Python 3.9 or later on machines like the one that built it: the library keeps its need of the C++
and OpenMP run-time libraries of the system.
"""
import base64
import hashlib
import re
import sys
import sysconfig
import zipfile
from pathlib import Path

METADATA = """Metadata-Version: 2.1
Name: orvel
Version: {version}
Summary: Numerical subroutines
Requires-Python: >=3.9
Requires-Dist: numpy
"""
WHEEL = """Wheel-Version: 1.0
Generator: tools/wheel.py
Root-Is-Purelib: false
Tag: py3-none-{platform}
"""


def contents(package, library, info, version, platform):
    for path in sorted(package.iterdir()):
        if path.is_file():
            yield f"orvel/{path.name}", path.read_bytes()
    yield "orvel/liborvel.so.1", library.read_bytes()
    yield f"{info}/METADATA", METADATA.format(version=version).encode()
    yield f"{info}/WHEEL", WHEEL.format(platform=platform).encode()


def entry(name):
    info = zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0))
    info.external_attr = 0o644 << 16
    return info


def main():
    package, library, into = map(Path, sys.argv[1:])
    version = re.search(r'"version":"([\d.]+)"', (package / "_interface.json").read_text())[1]
    platform = re.sub(r"[-.]", "_", sysconfig.get_platform())
    info = f"orvel-{version}.dist-info"
    path = into / f"orvel-{version}-py3-none-{platform}.whl"
    record = []
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as wheel:
        for name, data in contents(package, library, info, version, platform):
            digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
            record.append(f"{name},sha256={digest},{len(data)}")
            wheel.writestr(entry(name), data, zipfile.ZIP_DEFLATED)
        wheel.writestr(f"{info}/RECORD", "\n".join([*record, f"{info}/RECORD,,", ""]))
    print(path)


if __name__ == "__main__":
    main()
