#!/usr/bin/env bash
# Holds the rules themselves to account: planted.sh <folder> builds a small tree with one breach after the other and
# expects each to be named, with file and line, and nothing else to be.
set -euo pipefail
rules=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/rules.sh
tree=$1
failed=0

plant() { mkdir -p "$tree/$(dirname "$1")"; printf "$2" >"$tree/$1"; }
fresh() {
  rm -rf "$tree"
  plant src/base/CThing.h '#pragma once\n#include <cstdio>\nint Thing();\n'
  plant src/base/CThing.cpp '#include "base/CThing.h"\n#include <cstdlib>\nint Thing() { return getenv("A") != nullptr; }\n'
  plant src/board/CBoard.h '#pragma once\n#include "base/CThing.h"\n'
  plant src/board/CBoard.cpp '#include "board/CBoard.h"\n// fopen( in a comment\nconst char* k = "fopen(";\n'
  plant tests/board/BoardTest.cpp 'int main() {}\n'
}
# expect <rule> <breach as it must begin, or nothing> [<file> <text>]...
expect() {
  local rule=$1 wanted=$2 got status=0
  shift 2
  fresh
  while [ $# -gt 0 ]; do plant "$1" "$2"; shift 2; done
  got=$("$rules" "$rule" "$tree") || status=$?
  if [ -z "$wanted" ] && [ -z "$got" ] && [ $status = 0 ]; then return 0; fi
  if [ -n "$wanted" ] && [ $status = 1 ] && [[ "$got" == "$wanted"* && "$got" != *$'\n'* ]]; then return 0; fi
  echo "rule $rule: expected '${wanted:-nothing}', got '$got' with status $status"
  failed=1
}

for rule in includes platform headers words; do expect $rule ""; done

expect includes "src/base/CThing.cpp:2: include goes upward from base" \
  src/base/CThing.cpp '#include "base/CThing.h"\n#include "board/CBoard.h"\n'
expect includes "src/board/CBoard.cpp:2: include does not name a room" \
  src/board/CBoard.cpp '#include "board/CBoard.h"\n#include "CBoard.h"\n'
expect includes "src/board/CBoard.cpp:2: include does not name a room" \
  src/board/CBoard.cpp '#include "board/CBoard.h"\n# include "../base/CThing.h"\n'
expect includes "src/board/CBoard.cpp:1: include names no file" src/board/CBoard.cpp '#include "board/CNone.h"\n'

expect includes "" src/all.h '#pragma once\n#include "board/CBoard.h"\n'
expect includes "src/base/CThing.h:2: include goes upward from base" src/all.h '#pragma once\n' \
  src/base/CThing.h '#pragma once\n#include "all.h"\n'

expect platform "src/board/CBoard.cpp:2: call of the platform" \
  src/board/CBoard.cpp '#include "board/CBoard.h"\nauto* f = fopen("a", "r");\n'
expect platform "src/board/CBoard.cpp:2: call of the platform" \
  src/board/CBoard.cpp '#include "board/CBoard.h"\nint n = std::toupper(65);\n'
expect platform "src/board/CBoard.cpp:2: header of the platform" \
  src/board/CBoard.cpp '#include "board/CBoard.h"\n#include <fstream>\n'
expect platform "src/board/CBoard.h:3: call of the platform" \
  src/board/CBoard.h '#pragma once\n#include "base/CThing.h"\ninline const char* p = setlocale(0, "");\n'
expect platform "" src/board/CBoard.cpp '#include "board/CBoard.h"\nvoid f(X& x) { x.time(); x->clock(); runtime(); }\n'
expect platform "" src/board/CBoard.cpp '#include "board/CBoard.h"\nauto* f = fopen("a", "r");\n' \
  tests/house/allowed.txt 'platform src/board/CBoard.cpp fopen it is the one that may\n'
expect platform "tests/house/allowed.txt: allows what does not happen" \
  tests/house/allowed.txt 'platform src/board/CBoard.cpp fopen it is the one that may\n'

expect headers "src/board/CBoard.h:1: header without a guard" src/board/CBoard.h '#include "base/CThing.h"\n'
expect headers "src/board/CBoard.h:2: header opens a namespace" src/board/CBoard.h '#pragma once\nusing namespace std;\n'
expect headers "src/board/CBoard.cpp:1: own header is not the first include" \
  src/board/CBoard.cpp '#include "base/CThing.h"\n#include "board/CBoard.h"\n'

expect words "src/board/CBoard.cpp:2: unfinished" src/board/CBoard.cpp '#include "board/CBoard.h"\n// TO''DO later\n'
expect words "tests/board/BoardTest.cpp:1: cannot fail" tests/board/BoardTest.cpp 'void f() { GTEST_S''KIP(); }\n'
expect words "src/board/CBoard.cpp:1: points outside the tree" src/board/CBoard.cpp '// as iss''ue 3 says\n'
expect words "README.md:1: place outside the tree" README.md 'see ../sha''red/x\n'

exit $failed
