#!/usr/bin/env bash
# Installs the build into a scratch prefix and checks it as the desktop
# would meet it: the files, the menu entry, the file types and which
# program opens them, the software-centre entry, the manuals, the installed
# programs (without a display), and that uninstalling leaves no file.
# Usage: install_test.sh SOURCE_DIR BUILD_DIR
set -uo pipefail
source_dir=$1
build_dir=$2
scratch=$(mktemp -d)
manifest=$build_dir/install_manifest.txt
# cmake --install writes the build's manifest; a real install's is kept.
[ -f "$manifest" ] && cp "$manifest" "$scratch/manifest.kept"
restore() {
  if [ -f "$scratch/manifest.kept" ]; then cp "$scratch/manifest.kept" "$manifest"; else rm -f "$manifest"; fi
  rm -rf "$scratch"
}
trap restore EXIT
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

prefix=$scratch/prefix
cmake --install "$build_dir" --prefix "$prefix" >/dev/null || { echo "FAIL: cmake --install"; exit 1; }
id=org.example.tavilo

expected="bin/tavilo
bin/tavilo-convert
bin/tavilo-render
share/applications/$id.desktop
share/icons/hicolor/128x128/apps/$id.png
share/icons/hicolor/16x16/apps/$id.png
share/icons/hicolor/256x256/apps/$id.png
share/icons/hicolor/32x32/apps/$id.png
share/icons/hicolor/48x48/apps/$id.png
share/icons/hicolor/64x64/apps/$id.png
share/icons/hicolor/scalable/apps/$id.svg
share/man/man1/tavilo-convert.1
share/man/man1/tavilo.1
share/metainfo/$id.metainfo.xml
share/mime/packages/tavilo.xml"
installed=$(cd "$prefix" && find . -type f | sed 's|^\./||' | LC_ALL=C sort)
[ "$installed" = "$(echo "$expected" | LC_ALL=C sort)" ] || fail "installed files:"$'\n'"$installed"

out=$(desktop-file-validate "$prefix/share/applications/$id.desktop" 2>&1) || fail "desktop-file-validate: $out"
echo "$out" | grep -E 'error|warning' && fail "desktop-file-validate complains"
out=$(appstreamcli validate --no-net "$prefix/share/metainfo/$id.metainfo.xml" 2>&1) || fail "appstreamcli: $out"
for page in tavilo tavilo-convert; do
  out=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l "$prefix/share/man/man1/$page.1" 2>&1 >/dev/null)
  [ -z "$out" ] || fail "man $page: $out"
  LC_ALL=C.UTF-8 man -l "$prefix/share/man/man1/$page.1" 2>/dev/null | grep -q "^NAME" || fail "man $page renders no NAME"
done

# The file types, as a file manager finds them once the prefix is known.
out=$(update-mime-database "$prefix/share/mime" 2>&1) || fail "update-mime-database: $out"
echo "$out" | grep -iE 'error|warn|unknown|invalid' && fail "update-mime-database complains"
update-desktop-database "$prefix/share/applications" || fail "update-desktop-database"
export XDG_DATA_DIRS=$prefix/share:/usr/share XDG_DATA_HOME=$scratch/home PATH=$prefix/bin:$PATH
files=$scratch/files
mkdir -p "$files"
cp "$source_dir/examples/naca2412.pef" "$source_dir/examples/naca2412.xml" \
  "$source_dir/examples/naca2412_re200k.pol" "$source_dir/tests/data/uiuc/E387A.DRG" "$files/"
printf 'II*\0\010\0\0\0raw photo' >"$files/photo.pef"
printf '<?xml version="1.0"?>\n<note/>\n' >"$files/other.xml"
cp "$source_dir/examples/naca2412_re200k.pol" "$files/polar.txt"
while read -r name type; do
  got=$(gio info -a standard::content-type "$files/$name" | sed -n 's/.*content-type: //p')
  [ "$got" = "$type" ] || fail "$name is $got, not $type"
done <<EOF2
naca2412.pef application/x-pef-polar
naca2412.xml application/x-polar-exchange+xml
naca2412_re200k.pol application/x-xfoil-polar
E387A.DRG application/x-drag-polar
photo.pef image/x-pentax-pef
other.xml application/xml
polar.txt text/plain
EOF2
for type in application/x-xfoil-polar application/x-drag-polar application/x-pef-polar \
  application/x-polar-exchange+xml; do
  got=$(xdg-mime query default "$type")
  [ "$got" = "$id.desktop" ] || fail "xdg-mime query default $type: $got"
done

out=$("$prefix/bin/tavilo-convert" --version) || fail "tavilo-convert --version"
[ "$out" = "tavilo-convert $(sed -n 's/^project(Tavilo VERSION \([0-9.]*\).*/\1/p' "$source_dir/CMakeLists.txt")" ] \
  || fail "tavilo-convert --version: $out"
for option in --help --version; do
  env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM "$prefix/bin/tavilo" $option >"$scratch/out" 2>&1 \
    || fail "tavilo $option without a display: $(cat "$scratch/out")"
done
grep -q "^tavilo [0-9]" "$scratch/out" || fail "tavilo --version: $(cat "$scratch/out")"

cp "$manifest" "$scratch/manifest.test"
cmake -DMANIFEST="$scratch/manifest.test" -DPREFIX="$prefix" -DSHARE=share \
  -P "$source_dir/desktop/uninstall.cmake" >/dev/null || fail "uninstall"
left=$(cd "$prefix" && find . -mindepth 1 -not -path ./bin -not -path ./share -not -path ./share/man)
[ -z "$left" ] || fail "left after uninstalling: $left"

[ $failures -eq 0 ] && echo "install checks passed"
exit $((failures > 0))
