#!/usr/bin/env bash
# Uses the installed package: consume.sh <way> <work folder>. The program is the example of README.md, word for word, and
# it must print what the installed command prints of the same board.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
way=$1 work=$2
board=$LAMINATE_SOURCE/examples/blinker/blinker
command=$LAMINATE_PREFIX/bin/laminate
rm -rf "$work"
mkdir -p "$work"

readme_program() {
  awk '/^```cpp$/ { inside = 1; next } /^```$/ && inside { exit } inside' "$LAMINATE_SOURCE/README.md" >"$1"
  [ -s "$1" ] || { echo "README.md holds no C++ example"; return 1; }
}

run_and_compare() {
  "$1" "$board.pcf" "$board.ftf" >"$work/printed"
  [ -s "$work/printed" ] || { echo "the example prints nothing"; return 1; }
  "$command" nets "$board.pcf" >"$work/expected"
  diff "$work/expected" "$work/printed"
}

case $way in
  find_package)
    mkdir "$work/source"
    cp "$here/consumer.cmake" "$work/source/CMakeLists.txt"
    readme_program "$work/source/main.cpp"
    "$CMAKE" -S "$work/source" -B "$work/build" -DCMAKE_PREFIX_PATH="$LAMINATE_PREFIX" -DCMAKE_CXX_COMPILER="$CXX" \
      -DWANTED_VERSION="$LAMINATE_VERSION"
    "$CMAKE" --build "$work/build"
    run_and_compare "$work/build/consumer"
    ;;
  pkg_config)
    # Moved first: the package must not remember where it was put.
    cp -r "$LAMINATE_PREFIX" "$work/moved"
    export PKG_CONFIG_PATH=$work/moved/$LAMINATE_LIBDIR/pkgconfig
    [ "$(pkg-config --modversion laminate)" = "$LAMINATE_VERSION" ]
    readme_program "$work/main.cpp"
    flags=$(pkg-config --cflags laminate) libraries=$(pkg-config --libs laminate)
    [[ "$flags" == *"$work/moved/"* ]] || { echo "flags name another place: $flags"; exit 1; }
    "$CXX" -std=c++20 $flags "$work/main.cpp" -o "$work/consumer" $libraries
    run_and_compare "$work/consumer"
    ;;
  headers)
    # Every installed header in one source, in the order of their names, under a host's own strict warnings; and each that
    # has no source of its own by itself.
    cd "$LAMINATE_PREFIX/include/laminate"
    find . -name '*.h' | sort | sed 's|^\./\(.*\)|#include "\1"|' >"$work/all.cpp"
    [ "$(wc -l <"$work/all.cpp")" -ge 20 ]
    compile=("$CXX" -std=c++20 -Wall -Wextra -Werror -fsyntax-only -I.)
    "${compile[@]}" "$work/all.cpp"
    find . -name '*.h' | sort | while read -r header; do
      if [ ! -f "$LAMINATE_SOURCE/src/${header%.h}.cpp" ]; then
        mkdir -p "$work/$(dirname "$header")"
        echo "#include \"${header#./}\"" >"$work/${header%.h}.cpp"
        "${compile[@]}" "$work/${header%.h}.cpp"
      fi
    done
    ;;
esac
