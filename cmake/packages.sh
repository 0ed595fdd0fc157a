# Sourced by ./check and ./try: sees to the Debian packages that they need.
# need_packages <package>...: installs what is missing, as root or by sudo, and says so. Nothing happens if all is there.
need_packages() {
  if ! command -v dpkg-query >/dev/null; then
    echo "not a Debian system: taking for granted that these are installed: $*"
    return 0
  fi
  local package missing=() as_root=()
  for package in "$@"; do
    if [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then missing+=("$package"); fi
  done
  if [ ${#missing[@]} -eq 0 ]; then return 0; fi
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "these packages are missing, and only root can install them: ${missing[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  local install=(${as_root[@]+"${as_root[@]}"} env DEBIAN_FRONTEND=noninteractive
    apt-get install -y -q --no-install-recommends "${missing[@]}")
  echo "installing missing packages: ${missing[*]}"
  if "${install[@]}" </dev/null; then return 0; fi
  echo "not found in the present package lists, fetching them anew"
  ${as_root[@]+"${as_root[@]}"} apt-get update -q </dev/null && "${install[@]}" </dev/null
}
