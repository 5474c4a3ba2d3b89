# Reads a page as Doxygen should see it: links to public headers lead to their place in the
# reference, links to examples to their source, and what is not part of the site loses its link.
# "[text](try:NAME&KEY=VALUE)" becomes a link to the playground at an operation.
FNR == 1 {
  folder = FILENAME
  if (!sub(/\/[^\/]*$/, "/", folder)) folder = ""
  sub(/^.*\/docs\/guide\/$/, "docs/guide/", folder)
  sub(/^.*\/docs\/$/, "docs/", folder)
  sub(/^.*\/website\/$/, "website/", folder)
  if (folder ~ /^\//) folder = ""
}

/^(```|~~~)/ { inCode = !inCode }

!inCode {
  rest = $0
  line = ""
  while (match(rest, /\[[^]\[]*\]\([^)]*\)/)) {
    before = substr(rest, 1, RSTART - 1)
    link = substr(rest, RSTART, RLENGTH)
    rest = substr(rest, RSTART + RLENGTH)
    if (before ~ /!$/) sub(/\([^)]*\//, "(", link)  # pictures are found by their names
    line = line before (before ~ /!$/ ? link : rewritten(link))
  }
  $0 = line rest
}

{
  gsub(/`::ratio`/, "<tt>\\&#58;:ratio</tt>")  # Doxygen would take it for a link
  print
}

function rewritten(link,    text, target, path) {
  text = substr(link, 2, index(link, "](") - 2)
  target = substr(link, index(link, "](") + 2)
  sub(/\)$/, "", target)
  if (target ~ /^(https?:|#|mailto:)/) return link
  if (target ~ /^try:/) {
    sub(/^try:/, "", target)
    gsub(/&/, "\\&amp;", target)
    return "<div class=\"try\"><a href=\"play/index.html" (target == "" ? "" : "#op=" target) "\">" text "</a></div>"
  }
  if (target ~ /\.html/) return "<a href=\"" target "\">" text "</a>"
  path = folder target
  while (sub(/[^\/]+\/\.\.\//, "", path)) {}
  if (path ~ /^(docs\/.*|CHANGELOG|CONTRIBUTING)\.md(#.*)?$/) return link
  if (path == "README.md") return "@ref index \"" text "\""
  gsub(/`/, "", text)
  if (path ~ /^crv\/.*\.h$/ && path !~ /internal/) {
    sub(/^crv\//, "", path)
    gsub(/[\/.]/, "_", path)
    return "@ref " path " \"" text "\""
  }
  if (path ~ /^examples\/.*\.cpp$/) {
    sub(/^examples\//, "", path)
    gsub(/\//, "_2", path)
    sub(/\.cpp$/, "_8cpp-example.html", path)
    return "<a href=\"" path "\">" text "</a>"
  }
  return text
}
