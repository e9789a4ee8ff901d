#!/usr/bin/env bash
# make_zips.sh   makes the zips of this folder anew, by the packers that offices have
# The tables are those of client 1234; tables/ keeps them as they went in.
# Needs zip, 7z and python3. What it makes is committed, so the tests need none of them.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"
rm -rf tables ./*.zip
mkdir tables
python3 - tables <<'PYTHON'
import struct
import sys

YTD = ["YTD_GROSS", "YTD_FIT", "YTD_SIT", "YTD_FICA", "YTD_MEDICR", "YTD_SDI", "YTD_NET"]


def dbf(fields, rows):
    record_length = 1 + sum(length for _, _, length, _ in fields)
    head = struct.pack("<B3BIHH17xBxx", 3, 104, 6, 14, len(rows), 33 + 32 * len(fields),
                       record_length, 3)
    for name, kind, length, decimals in fields:
        head += struct.pack("<11sc4xBB14x", name.encode(), kind.encode(), length, decimals)
    body = b""
    for row in rows:
        body += b" "
        for (_, kind, length, _), cell in zip(fields, row):
            body += (cell.rjust(length) if kind == "N" else cell.ljust(length)).encode("cp1252")
    return head + b"\r" + body + b"\x1a"


def write(name, content):
    with open(sys.argv[1] + "/" + name, "wb") as file:
        file.write(content)


write("Hvcl1234.dbf", dbf([("NAME", "C", 30, 0), ("MIN_WAGE", "N", 6, 2)],
                          [["Three Rivers Orchards", "6.75"]]))
write("Prms1234.dbf", dbf(
    [("EMPL_NUMB", "N", 5, 0), ("SORT_NAME", "C", 20, 0), ("CREW", "N", 4, 0)]
    + [(name, "N", 10, 2) for name in YTD] + [("RATE", "N", 7, 2)],
    [["130", "Peña Luis", "2"] + ["1234.56"] * 7 + ["8.50"],
     ["125", "Ames Ruth", "2"] + ["20.00"] * 7 + ["7.25"],
     ["140", "Ortiz Ana", "0"] + [""] * 7 + [""]]))
write("Prms1234.fpt", b"\x00\x00\x00\x08\x00\x00\x00\x40" + bytes(504) + b"memo")
write("Prms1234.cdx", bytes(range(256)) * 4)
for word in ("Glen", "Glod", "Gleq"):
    write(word + "1234.dbf", dbf([("CODE", "N", 5, 0), ("NAME", "C", 20, 0)],
                                 [["12", word + " twelve"], ["101", "last"]]))
PYTHON

upper=$(mktemp -d)
trap 'rm -rf "$upper"' EXIT
for table in tables/*; do
    name=${table##*/}
    cp "$table" "$upper/${name^^}"
done

(
    cd tables
    mkdir notes
    echo "for the office alone" >notes/Prms1234.txt
    zip -qr ../infozip.zip .
    echo "Halvane backup of descriptions" | zip -qz ../infozip.zip
    rm -r notes
    zip -qX - ./* | cat >../infozip-streamed.zip
    zip -qfz ../infozip-zip64.zip ./*
    7z a -bso0 -bsp0 -tzip -mx=9 ../7zip.zip .
)
(cd "$upper" && zip -q0X ../stored.zip ./* && mv ../stored.zip "$OLDPWD/infozip-stored.zip")
python3 - "$upper" dos.zip <<'PYTHON'
import os
import sys
import zipfile

# As the packers of DOS did it: their own system's number, version 1.0 or 2.0, no Unix attributes.
with zipfile.ZipFile(sys.argv[2], "w") as packed:
    for at, name in enumerate(sorted(os.listdir(sys.argv[1]))):
        member = zipfile.ZipInfo(name, (1994, 6, 14, 8, 30, 2 * at))
        member.create_system = 0
        member.external_attr = 0x20
        member.compress_type = zipfile.ZIP_DEFLATED if at % 2 else zipfile.ZIP_STORED
        with open(os.path.join(sys.argv[1], name), "rb") as table:
            packed.writestr(member, table.read())
PYTHON
(cd tables && python3 -m zipfile -c ../python.zip ./*)
