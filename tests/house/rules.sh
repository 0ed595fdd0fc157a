#!/usr/bin/env bash
# The rules of the house that no compiler holds: rules.sh <rule> [<root>] prints each breach as FILE:LINE: reason: text and
# exits 1 if there is one. Exceptions stand in allowed.txt, each with its reason.
#
#   includes  between rooms, includes point downward only and name the room
#   platform  files, locale, environment and the C library's text functions are used in base alone
#   headers   headers are guarded and name no namespace; a source includes its own header first
#   words     nothing is left unfinished, no test is unable to fail, nothing points at papers or places outside this tree
set -euo pipefail
rule=${1:?rule}
root=$(cd "${2:-$(dirname "${BASH_SOURCE[0]}")/../..}" && pwd)
cd "$root"

rooms="base reader drawobj technology board designdata export save facade"

existing() { local p; for p in "$@"; do if [ -e "$p" ]; then printf '%s\n' "$p"; fi; done; }
# The files of the tree by name; what is built or kept as raw input for the fuzz targets is none of it.
files() { existing "$@" | xargs -r -d '\n' -I{} find {} -type f -not -path '*/corpus*/*' -not -path '*/build/*' | sort; }
sources() { files src | grep -E '\.(h|cpp)$' || [ $? = 1 ]; }

includes() {
  sources | xargs -r awk -v rooms="$rooms" '
    BEGIN { n = split(rooms, list, " "); for (i = 1; i <= n; i++) level[list[i]] = i }
    # What lies beside the rooms stands above them all.
    FNR == 1 { split(FILENAME, path, "/"); room = path[2]; if (path[3] == "") level[room] = n + 1 }
    /^[ \t]*#[ \t]*include[ \t]*"/ {
      split($0, quoted, "\""); split(quoted[2], to, "/")
      if (!(to[1] in level)) print FILENAME ":" FNR ": include does not name a room: " quoted[2]
      else if (level[to[1]] > level[room]) print FILENAME ":" FNR ": include goes upward from " room ": " quoted[2]
      else if (system("test -f \"src/" quoted[2] "\"")) print FILENAME ":" FNR ": include names no file: " quoted[2]
    }'
}

platform() {
  local headers='fstream|filesystem|iostream|iomanip|sstream|locale|clocale|locale\.h|ctime|time\.h|unistd\.h|fcntl\.h|dirent\.h|iconv\.h|sys/[a-z]*\.h'
  local text='f?printf|v[a-z]*printf|s[n]?printf|f?scanf|sscanf|fgets|fputs|fputc|putc|puts|ato[fil]|atoll|strto[a-z]+|sto[dfil]|isspace|isalpha|isdigit|isalnum|isprint|isupper|islower|toupper|tolower'
  local files='fopen|freopen|fdopen|fclose|fread|fwrite|fflush|fseek|ftell|rename|unlink|mkdir|rmdir|opendir|readdir|lstat|fstat|mkstemp|mkdtemp|tmpfile|tmpnam'
  local system='setlocale|localeconv|newlocale|uselocale|getenv|setenv|putenv|system|popen|fork|getpid|getuid|time|clock|localtime|gmtime|rand|srand'
  sources | grep -v '^src/base/' | xargs -r awk -v headers="$headers" -v calls="$text|$files|$system" '
    { line = $0; sub(/\/\/.*/, "", line); gsub(/"([^"\\]|\\.)*"/, "\"\"", line) }
    line ~ "^[ \t]*#[ \t]*include[ \t]*<(" headers ")>" { print FILENAME ":" FNR ": header of the platform: " $0 }
    line ~ "(^|[^A-Za-z0-9_.>])(" calls ")[ \t]*\\(" { print FILENAME ":" FNR ": call of the platform: " $0 }'
}

headers() {
  sources | xargs -r awk '
    function own(file) { sub(/^src\//, "", file); sub(/\.cpp$/, ".h", file); return file }
    FNR == 1 { first = 1; header = FILENAME ~ /\.h$/; wanted = own(FILENAME)
               if (!header && system("test -f \"src/" wanted "\"")) wanted = ""
               if (header && system("grep -qx \"#pragma once\" \"" FILENAME "\"")) print FILENAME ":1: header without a guard" }
    header && /^using namespace/ { print FILENAME ":" FNR ": header opens a namespace: " $0 }
    !header && wanted != "" && first && /^[ \t]*#[ \t]*include/ {
      first = 0
      if (index($0, "\"" wanted "\"") == 0) print FILENAME ":" FNR ": own header is not the first include: " $0
    }'
}

words() {
  # Each pattern is written so that it does not match itself.
  local unfinished='\b(TO[D]O|FIX[M]E|X[X]X|HA[C]K|not imple[m]ented|unimple[m]ented|st[u]b)\b'
  local unable='EXPECT_TRUE\(tr[u]e\)|ASSERT_TRUE\(tr[u]e\)|\bSUCC[E]ED\(\)|GTEST_S[K]IP|\bDISABL[E]D_'
  local papers='\bspec[i]fications?\b|\bseed doc[u]ment|\bP[a]rts? [1-7]\.[0-9]|\biss[u]e #?[0-9]|\bpull requ[e]st\b'
  local places='[.][.]/sha[r]ed\b|(^|[^A-Za-z0-9_.])/wo[r]k/'
  local here; here=$(files src tests tools fuzz bench cmake docs examples CMakeLists.txt CMakePresets.json README.md check try \
    .clang-tidy .clang-format)
  # grep_for <pattern> <files> <reason> [<option of grep>]
  grep_for() {
    local list; list=$(printf '%s\n' "$here" | grep -E "$2") || return 0
    { printf '%s\n' "$list" | xargs -d '\n' grep -HnIE ${4:-} -e "$1" || [ $? = 123 ]; } |
      sed "s/^\([^:]*:[0-9]*:\)/\1 $3:/"
  }
  grep_for "$unfinished" '\.(h|cpp|txt|cmake|sh|json)$|^(check|try)$' 'unfinished'
  grep_for "$unable" '^(tests|fuzz|bench)/' 'cannot fail'
  grep_for "$papers" '.' 'points outside the tree' -i
  grep_for "$places" '.' 'place outside the tree'
}

case "$rule" in includes | platform | headers | words) ;; *) echo "rules.sh: no such rule: $rule" >&2; exit 2 ;; esac
breaches=$("$rule")

# A line of allowed.txt: rule, file, a word that the breach holds, and the reason.
allowed=tests/house/allowed.txt
if [ -f "$allowed" ]; then
  while read -r its_rule its_file its_word reason; do
    if [ "$its_rule" != "$rule" ]; then continue; fi
    left=$(printf '%s\n' "$breaches" | awk -v file="$its_file:" -v word="$its_word" \
      '!(index($0, file) == 1 && index($0, word))')
    if [ "$left" = "$breaches" ] || [ -z "$reason" ]; then
      left="$left"$'\n'"$allowed: allows what does not happen, or says no reason: $its_rule $its_file $its_word"
    fi
    breaches=$left
  done <"$allowed"
fi
breaches=$(printf '%s\n' "$breaches" | sed '/^$/d')
if [ -n "$breaches" ]; then printf '%s\n' "$breaches"; exit 1; fi
