#!/usr/bin/env bash
# Makes the archives of this folder with public tools: zip 3.0, GNU tar 1.34, gzip, bzip2, compress and Python's zipfile.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export TZ=UTC LC_ALL=C.UTF-8
cd "$work"
mkdir -p docs/empty
printf 'hello' >docs/a.txt
for _ in $(seq 100); do printf '0123456789'; done >b.txt
chmod 444 docs/a.txt
touch -d '2001-05-17 17:30:58 UTC' docs/a.txt b.txt docs/empty docs

zip -q -X -r listing.zip docs b.txt
zip -q -r times.zip b.txt
zip -q -X -P secret encrypted.zip b.txt
zip -q -X one.zip b.txt && { printf 'MZ, a program that unpacks itself'; cat one.zip; } >sfx.zip && zip -q -A sfx.zip
rm one.zip
printf 'PK\5\6%018d' 0 | tr 0 '\0' >empty.zip
tar --format=ustar --owner=0 --group=0 --numeric-owner -cf listing.tar docs b.txt
gzip -9nk listing.tar && mv listing.tar.gz listing.tgz
bzip2 -k listing.tar
compress -c listing.tar >listing.tar.Z
gzip -9c b.txt >single.gz
bzip2 -c b.txt >b.txt.bz2
compress -c b.txt >b.txt.Z
python3 - <<'P'
import zipfile
# Second bytes of 0x5C in code page 932; letters that 1252 has; letters that neither has; look-alikes of separators.
names = ['表/ソ能.txt', 'Äpfel.txt', '한글.txt', '😀.txt', 'a¥b∕c＼d⁄e.txt', 'ｱ.txt']
with zipfile.ZipFile('names.zip', 'w') as archive:
    for name in names:
        archive.writestr(zipfile.ZipInfo(name, (2001, 5, 17, 17, 30, 58)), b'x')
P
cp ./*.zip ./listing.t* single.gz b.txt.* "$here"
