#!/usr/bin/env bash
# make_zips.sh   makes the zips of this folder anew out of tables/, by the packers that offices have
# Needs zip, 7z and python3. What it makes is committed, so the tests need none of them.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"
rm -f ./*.zip
upper=$(mktemp -d)
trap 'rm -rf "$upper" tables/notes' EXIT
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
    python3 -m zipfile -c ../python.zip ./*
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
