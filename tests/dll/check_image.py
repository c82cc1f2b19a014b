"""Checks the library as a file: what it exports and imports, its hardening bits, its version.

usage: check_image.py DLL COMMAND_LIST CJSON_HEADER VERSION
"""
import re
import struct
import sys

# Parts of Windows itself; a host copies one file.
WINDOWS_DLLS = {"advapi32.dll", "gdi32.dll", "gdiplus.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll", "oleacc.dll",
                "oleaut32.dll", "shlwapi.dll", "user32.dll"}
HIGH_ENTROPY_VA, DYNAMIC_BASE, NX_COMPAT = 0x20, 0x40, 0x100


class Image:
    """A 64-bit portable executable, read by file offsets."""

    def __init__(self, data):
        self.data = data
        pe = self.read("<I", 0x3C)
        assert data[pe:pe + 4] == b"PE\0\0"
        sections, self.timestamp = self.read("<H", pe + 6), self.read("<I", pe + 8)
        optional = pe + 24
        assert self.read("<H", optional) == 0x20B, "not a 64-bit image"
        self.characteristics = self.read("<H", optional + 70)
        self.directories = [struct.unpack_from("<II", data, optional + 112 + 8 * i) for i in range(16)]
        table = optional + self.read("<H", pe + 20)
        self.sections = [struct.unpack_from("<IIII", data, table + 40 * i + 8) for i in range(sections)]

    def read(self, form, offset):
        return struct.unpack_from(form, self.data, offset)[0]

    def offset(self, address):
        for size, start, raw_size, raw in self.sections:
            if start <= address < start + max(size, raw_size):
                return raw + address - start
        raise ValueError(hex(address))

    def text(self, address):
        start = self.offset(address)
        return self.data[start:self.data.index(b"\0", start)].decode("ascii")

    def exports(self):
        """Each exported name with the address that it stands for."""
        table = self.offset(self.directories[0][0])
        count, functions, names, ordinals = struct.unpack_from("<IIII", self.data, table + 24)
        result = {}
        for i in range(count):
            ordinal = self.read("<H", self.offset(ordinals) + 2 * i)
            name = self.text(self.read("<I", self.offset(names) + 4 * i))
            result[name] = self.read("<I", self.offset(functions) + 4 * ordinal)
        return result

    def imports(self):
        at, result = self.offset(self.directories[1][0]), set()
        while self.read("<I", at + 12) != 0:
            result.add(self.text(self.read("<I", at + 12)).lower())
            at += 20
        return result


def main(dll, list_path, header_path, version):
    image = Image(open(dll, "rb").read())
    rows = open(list_path).read()
    commands = set(re.findall(r"^QUILLMATE_(?:SAME_)?COMMAND\((\w+)", rows, re.MULTILINE))
    cjson = set(re.findall(r"^CJSON_PUBLIC\([^)]*\)\s*(cJSON_\w+)\(", open(header_path).read(), re.MULTILINE))
    problems = []

    def check(holds, message):
        if not holds:
            problems.append(message)

    exports = image.exports()
    check(len(commands) == 61 and len(cjson) == 78, f"{len(commands)} commands and {len(cjson)} of cJSON listed")
    check(set(exports) == commands | cjson, f"exports differ: {sorted(set(exports) ^ (commands | cjson))}")
    check(exports.get("perform") == exports.get("actionchains"), "perform is not actionchains")
    check(image.imports() <= WINDOWS_DLLS, f"imports {sorted(image.imports() - WINDOWS_DLLS)}")
    for bit in (HIGH_ENTROPY_VA, DYNAMIC_BASE, NX_COMPAT):
        check(image.characteristics & bit, f"hardening bit {bit:#x} is off")
    check(image.timestamp == 0, "the header carries the time of the build")
    resources = image.data[image.offset(image.directories[2][0]):]
    check(f"ProductVersion\0\0\0{version}".replace("\0\0\0", "\0").encode("utf-16-le") in
          resources.replace(b"\0\0\0\0", b"\0\0"), "no version resource")
    return "\n".join(problems) or None  # None is success


sys.exit(main(*sys.argv[1:]))
