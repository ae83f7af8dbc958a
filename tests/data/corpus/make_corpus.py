#!/usr/bin/env python3
"""Makes the checked-in damaged project files of the hostile-file tests.

Each file is laid here byte by byte from the record layout of the project file (records of 1000
bytes, little-endian numbers, Text[n] blank padded, String = 2-byte length and the characters),
then damaged on purpose. The files are small and kept in the repository so that the same bytes are
read by every build; run this script again only to change them.
"""

import os
import random
import struct

RECORD = 1000
HERE = os.path.dirname(os.path.abspath(__file__))


def record(*fields):
    """A record of blanks with (offset, bytes) fields put in it, cut at its end."""
    data = bytearray(b" " * RECORD)
    for offset, value in fields:
        value = value[: max(0, RECORD - offset)]
        data[offset : offset + len(value)] = value
    return bytes(data)


def integer(value):
    return struct.pack("<h", value)


def long(value):
    return struct.pack("<i", value)


def single(value):
    return struct.pack("<f", value)


def double(value):
    return struct.pack("<d", value)


def text(value, width):
    return value.encode("latin-1")[:width].ljust(width, b" ")


def string(value):
    raw = value.encode("latin-1")
    return struct.pack("<H", len(raw)) + raw


def project_data(title, fmt, version=0):
    return record((0, integer(version)), (2, text(title, 40)), (404, long(fmt)))


def system_data(material=4, hose=500, discharge="Sprinkler"):
    return record((12, integer(material)), (398, text("WET", 10)), (572, integer(hose)),
                  (574, text(discharge, 9)))


def pipe_row(beg, end, material=4, fitting="", diameter=1.0):
    fields = string(beg) + string(end) + text("None", 6) * 2 + single(0.0) * 6
    fields += text("", 6) * 2 + single(0.0) * 2 + integer(-1) + integer(material)
    fields += single(-4.0) + single(diameter) + integer(-1) + single(10.0) + integer(0)
    fields += integer(0) * 7 + string(fitting) + single(10.0) + integer(0) * 3 + single(0.0)
    fields += text("", 6)
    return record((0, fields))


def calculation_data(results=0):
    return record((0, text("", 100)), (162, integer(1)), (482, integer(results)))


def project(rows, results=0, nodes=0, pipes=0, fmt=60130, tail=None, title="Corpus",
            result_rows=(), node_rows=(), pipe_rows=(), system=None):
    """The records of a whole file; the counts are written as given, the rows as listed."""
    out = [project_data(title, fmt), record(), record(), record(), system or system_data(),
           record((0, integer(len(rows) if isinstance(rows, list) else rows)))]
    out += rows if isinstance(rows, list) else []
    out += [record(), record(), calculation_data(results)]
    out += list(result_rows)
    out += [record((0, integer(nodes))), record((0, integer(pipes)))]
    out += list(node_rows) + list(pipe_rows)
    out += [record((0, double(0.0)))] * 4 + [record((0, integer(0))), record((0, integer(0)))]
    out += tail if tail is not None else [record((0, string("Alarm Check Valve"))),
                                          record((0, string("Alarm CV"))),
                                          record((0, string("ACV"))),
                                          record((0, integer(0)))]
    return b"".join(out)


def with_count(data, record_number, offset, value):
    start = (record_number - 1) * RECORD + offset
    return data[:start] + integer(value) + data[start + 2 :]


def write(name, data):
    with open(os.path.join(HERE, name), "wb") as stream:
        stream.write(data)


def main():
    rows = [pipe_row("10", "20"), pipe_row("20", "30", material=60, fitting="2E"),
            pipe_row("30", "40")]
    write("empty.qnw", b"")
    write("one_byte.qnw", b"6")
    write("header_only.qnw", project(rows)[: 5 * RECORD])
    write("cut_inside_pipe_row.qnw", project(rows)[: 7 * RECORD + 37])
    # Counts of -1 and 32767 in the pipe rows, the results, the nodes and the pipes.
    base = project(rows)
    negative = with_count(base, 6, 0, -1)
    negative = with_count(negative, 12, 482, -1)
    write("negative_counts.qnw", with_count(with_count(negative, 13, 0, -1), 14, 0, -1))
    huge = with_count(base, 6, 0, 32767)
    write("huge_counts.qnw", with_count(huge, 12, 482, 32767))
    # A pipe row whose first String claims 0xFFFF characters, and one that runs past its record.
    damaged_rows = [record((0, b"\xff\xff" + b"1" * 20)), pipe_row("20", "30", fitting="F" * 990),
                    pipe_row("30", "40")]
    write("strings_past_record.qnw", project(damaged_rows))
    # NaN and infinities where numbers are expected: a dump shows them as null.
    odd = record((0, single(float("nan"))), (4, single(float("inf"))), (12, integer(4)),
                 (398, text("WET", 10)), (574, text("Sprinkler", 9)))
    write("nan_values.qnw", project(rows, system=odd))
    # An old file: no device names, so its trailing bytes are not read; the hose flow is cleared.
    write("format_60111.qnw", project(rows, fmt=60111, tail=[record((0, string("junk")))]))
    # A material above 54 and a UnitSystem of 3: both repaired on reading.
    units = project(rows)
    units_record = 5 + 1 + len(rows) + 3 + 2 + 4 + 2
    write("bad_material_units.qnw", with_count(units, units_record, 0, 3))
    generator = random.Random(7)
    write("random_bytes.qnw", bytes(generator.randrange(256) for _ in range(5000)))
    header = bytearray(project(rows))
    for _ in range(200):
        header[generator.randrange(len(header))] ^= 1 << generator.randrange(8)
    write("flipped_bits.qnw", bytes(header))


if __name__ == "__main__":
    main()
