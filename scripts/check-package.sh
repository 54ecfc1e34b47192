#!/usr/bin/env bash
# Checks the Debian package that scripts/package.sh made, as CI does: what it holds and
# depends on, its desktop entry (desktop-file-validate); then installs it with apt, checks
# that the programs run from /usr/bin, that SFF files are a known type and that Tarvolin
# is their default handler, and removes it again. Uses sudo when not run as root.
set -euo pipefail
cd "$(dirname "$0")/.."
deb=$(ls tarvolin_*.deb)
sudo_cmd=""
[ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
fail() {
  echo "check-package: $*" >&2
  exit 1
}

contents=$(dpkg-deb -c "$deb" | awk '{print $6}')
for f in ./usr/bin/tarvolin ./usr/bin/tarvolin-cli ./usr/bin/sprmaker.exe ./usr/share/tarvolin/tarvolin.en.ini \
  ./usr/share/applications/tarvolin.desktop ./usr/share/mime/packages/tarvolin.xml \
  ./usr/share/icons/hicolor/{48x48,128x128,256x256}/apps/tarvolin.png \
  ./usr/share/man/man1/{tarvolin,tarvolin-cli,sprmaker.exe}.1.gz; do
  grep -qxF "$f" <<<"$contents" || fail "$deb does not hold $f"
done
depends=$(dpkg-deb -f "$deb" Depends)
for p in libqt6widgets6 libpng16-16 fonts-ipafont-gothic; do
  grep -q "$p" <<<"$depends" || fail "$deb does not depend on $p: $depends"
done
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
dpkg-deb -x "$deb" "$tmp/root"
desktop-file-validate "$tmp/root/usr/share/applications/tarvolin.desktop"

export DEBIAN_FRONTEND=noninteractive
$sudo_cmd apt-get install -y -qq "./$deb" >/dev/null
/usr/bin/tarvolin --help >/dev/null
/usr/bin/tarvolin-cli sample "$tmp/sample.sff"
mkdir "$tmp/png"
/usr/bin/tarvolin-cli export --format png "$tmp/sample.sff" "$tmp/png"
printf 'rebuilt.sff\r\n%s\r\n0\r\n0\r\n0\r\n0\r\n' "$(ls "$tmp/png" | head -n 1)" >"$tmp/png/param.txt"
(cd "$tmp/png" && /usr/bin/sprmaker.exe -q <param.txt)
grep -q 'application/x-sff-sprites:\*\.sff' /usr/share/mime/globs2 || fail "*.sff is not a known file type"
handler=$(xdg-mime query default application/x-sff-sprites)
[ "$handler" = tarvolin.desktop ] || fail "the default handler of SFF files is '$handler', not tarvolin.desktop"
$sudo_cmd apt-get remove -y -qq tarvolin >/dev/null
echo "check-package: $deb holds what it should, its desktop entry validates, it installs, runs and opens SFF files"
