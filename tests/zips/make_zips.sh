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
zips=$PWD
cd "$upper"
zip -q0X "$zips/infozip-stored.zip" ./*
zip -qkX "$zips/dos.zip" ./*  # as the packers of DOS: their system's number, no Unix attributes
