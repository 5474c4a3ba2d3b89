# links.sh FOLDER: every local link, picture and script of the pages in a folder leads to a file and,
# where it names one, to an anchor in it. Prints what does not, and fails. Links out of the folder's
# pages with a scheme are not followed. States behind # of the playground name one of its operations.
set -eu
operations=$(sed -n 's/^  \([a-z]*\): {$/ \1 /p' website/play/*.js)
cd "$1"
find . -name '*.html' | sed 's,^\./,,' | sort >.pages
[ -s .pages ]
find . -type f | sed 's,^\./,,' >.files
# shellcheck disable=SC2046,SC2086  # names have no spaces
LC_ALL=C awk -v operations="$(echo $operations)" '
  FILENAME == ".files" { isFile[$0] = 1; next }
  {
    page = FILENAME
    sub(/^\.\//, "", page)
    rest = $0
    while (match(rest, /(href|src|data|id|name)="[^"]*"/)) {
      attribute = substr(rest, RSTART, RLENGTH)
      rest = substr(rest, RSTART + RLENGTH)
      value = attribute
      sub(/^[a-z]*="/, "", value)
      sub(/"$/, "", value)
      if (attribute ~ /^(id|name)/) isAnchor[page "#" value] = 1
      else if (value !~ /^([a-z]+:|\/\/)/ && value != "" && !(value in from)) from[page SUBSEP value] = 1
    }
  }
  END {
    for (link in from) {
      split(link, parts, SUBSEP)
      folder = parts[1]
      if (!sub(/\/[^\/]*$/, "/", folder)) folder = ""
      target = parts[2]
      anchor = ""
      if (match(target, /#/)) {
        anchor = substr(target, RSTART + 1)
        target = substr(target, 1, RSTART - 1)
      }
      path = target == "" ? parts[1] : folder target
      while (sub(/[^\/]+\/\.\.\//, "", path)) {}
      operation = anchor
      if (!sub(/^op=/, "", operation)) operation = ""
      sub(/&.*/, "", operation)
      if (!(path in isFile)) print parts[1] ": no file for " parts[2]
      else if (operation != "") {
        if (index(" " operations " ", " " operation " ") == 0) print parts[1] ": no operation " operation
      } else if (anchor != "" && !((path "#" anchor) in isAnchor))
        print parts[1] ": no anchor for " parts[2]
    }
  }' .files $(cat .pages) >.dead
sort .dead
[ ! -s .dead ]
rm .dead .pages .files
