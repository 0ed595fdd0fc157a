#!/usr/bin/env bash
# A place of real designs that is named must hold some: designs.sh <cmake> <work folder>. Otherwise a run would pass for
# want of designs.
set -euo pipefail
cmake=$1 work=$2
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
unset LAMINATE_DESIGNS LAMINATE_EXPECTED
rm -rf "$work"
mkdir -p "$work/source" "$work/empty/board" "$work/full/board"
touch "$work/full/board/board.pcf"
cat >"$work/source/CMakeLists.txt" <<TXT
cmake_minimum_required(VERSION 3.25)
project(designs NONE)
include($root/cmake/LaminateTestData.cmake)
message(STATUS "environment: \${LAMINATE_TEST_ENVIRONMENT}")
TXT
failed=0
# expect <text of the configuration> <argument>...
expect() {
  local wanted=$1 got
  shift
  rm -rf "$work/build"
  got=$("$cmake" -S "$work/source" -B "$work/build" "$@" 2>&1) && got+=" ok" || got+=" refused"
  got=${got//$'\n'/ }
  if [[ "$got" != *$wanted* ]]; then echo "with '$*' expected '$wanted', got: $got"; failed=1; fi
}
expect "ok"
expect "LAMINATE_DESIGNS is set to*refused" "-DLAMINATE_DESIGNS=$work/empty"
expect "LAMINATE_DESIGNS is set to*refused" "-DLAMINATE_DESIGNS=$work/none"
expect "LAMINATE_DESIGNS is set to*refused" "-DLAMINATE_DESIGNS=full"
expect "LAMINATE_EXPECTED is set to*refused" "-DLAMINATE_EXPECTED=$work/empty"
expect "LAMINATE_DESIGNS=$work/full*ok" "-DLAMINATE_DESIGNS=$work/full"
LAMINATE_DESIGNS=$work/full expect "LAMINATE_DESIGNS=$work/full*ok"
LAMINATE_DESIGNS=$work/empty expect "LAMINATE_DESIGNS is set to*refused"
exit $failed
