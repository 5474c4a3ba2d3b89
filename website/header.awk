# Reads a public header as Doxygen should see it:
#   - the comment that opens the file describes a group of its own, within the group of its room
#   - a heading that names a source becomes a member group
#   - rows of codes, "0  found", become a table
#   - "Method:", "Trap:" and "Precondition:" become paragraphs with a title
#   - a declaration whose name has a row in docs/promises.md is shown with that row
#   - specialisations of templates of the standard library are left out
#   - a header whose operations the playground has links to it
#   - the comment of a struct speaks for its fields, which may have words of their own behind them
BEGIN {
  while ((getline line < "docs/promises.md") > 0) readPromise(line)
  split("fit.h fit flatten.h flatten offset.h offset contacts.h contacts curveContacts.h contacts nearest.h nearest " \
    "curveSearch.h nearest direction.h nearest walk.h walk arcLength.h walk cut.h cut region.h weld separate.h weld " \
    "GxBezier.h nearest GxBezierCurve.h fit curveEdits.h copy positionMaps.h copy arrangeBezierCurve.h reverse " \
    "GxBezierCurvePositionMapBase.h reverse svg.h flatten", pairs, " ")
  for (n = 1; n in pairs; n += 2) operations[pairs[n]] = pairs[n + 1]
  for (n = 1; (getline lines[n] < ARGV[1]) > 0; ++n) {
    if (lines[n] !~ /^struct std::/) continue
    for (first = n; lines[first - 1] ~ /^(\/\/\/|template)/; --first) isLeftOut[first - 1] = 1
  }
}

isLeftOut[FNR] { next }
/^struct std::/ { inStandard = 1 }
inStandard {
  if (/};$/) inStandard = 0
  next
}

# Rows of the tables in docs/promises.md: "| `a`, `b` with a chord | work | degenerate | failure |".
# A name may have several rows, one for each form of the operation.
function readPromise(line,    cells, names, n, i, row) {
  if (line ~ /^## /) section = line
  if (line !~ /^\| .*`.* \|$/ || split(line, cells, / *\| */) < 5) return
  if (section ~ /heavy/) return
  n = split(cells[2], names, "`")
  for (i = 2; i <= n; i += 2) {
    if (section !~ /accuracy/) sub(/^.*::/, "", names[i])
    row = ++rowsOf[section, names[i]]
    promise[section, names[i], row, "Form"] = cells[2]
    promise[section, names[i], row, "Cost"] = cells[3]
    promise[section, names[i], row, "Odd input"] = cells[4]
    promise[section, names[i], row, "On failure"] = cells[5]
  }
}

function sectionOf(file) {
  if (file ~ /accurate|svg/) return "## Results with a stated accuracy"
  if (file ~ /foundation|bernstein|GxHandle/) return "## Points, lines, solvers, lists"
  if (file ~ /bezier\/GxBezier.h/) return "## One segment, `GxBezier`"
  if (file ~ /GxBezierCurve.h/) return "## A curve, `GxBezierCurve`"
  return "## Positions and maps"
}

function promisesFor(indent, name,    titles, row, i, text, rows) {
  if (ofClass != "" && sectionOf(FILENAME) ~ /accuracy/ && name != ofClass) name = ofClass "::" name
  rows = rowsOf[sectionOf(FILENAME), name]
  if (FILENAME ~ /io\.h/ || isProtected || !rows) return
  split("Form,Cost,Odd input,On failure", titles, ",")
  print indent "///\n" indent "/// <table class=\"promise\">"
  for (row = 1; row <= rows; ++row) {
    for (i = rows > 1 ? 1 : 2; i <= 4; ++i) {
      text = promise[sectionOf(FILENAME), name, row, titles[i]]
      gsub(/ See below/, " See @ref md_docs_promises", text)
      if (text != "") print indent "/// <tr><th>" titles[i] "</th><td>" text "</td></tr>"
    }
  }
  print indent "/// </table>"
}

function closeGroup() {
  if (inGroup) print "/// @}"
  inGroup = 0
}

function closeRows() {
  if (inRows) print indent "/// </td></tr></table>"
  inRows = 0
}

# A line of a doc comment, the marker and the indent taken off; rows start two or more spaces in.
function commentLine(text,    lead, key) {
  match(text, /^ */)
  lead = RLENGTH
  if (inRows && lead >= column) {
    print indent "/// " substr(text, lead + 1)
    return
  }
  if (lead >= 3 && match(text, /[^ ]  +[^ ]/)) {
    key = substr(text, lead + 1, RSTART - lead)
    column = RSTART + RLENGTH - 2
    print indent "/// " (inRows ? "</td></tr>" : "<table class=\"codes\">") "<tr><th>" key "</th><td>"
    print indent "/// " substr(text, column + 1)
    inRows = 1
    return
  }
  if (lead >= 3) {
    column = lead + 1
    print indent "/// " (inRows ? "</td></tr>" : "<table class=\"codes\">") "<tr><td colspan=\"2\">"
    print indent "/// " substr(text, lead + 1)
    inRows = 1
    return
  }
  closeRows()
  gsub(/<(ratio|chrono)>/, "`&`", text)
  sub(/^ Method: /, " @par Method\n" indent "/// ", text)
  if (sub(/^ Trap: /, "", text)) text = " @attention " toupper(substr(text, 1, 1)) substr(text, 2)
  sub(/^ Precondition: /, " @pre ", text)
  print indent "///" text
}

FNR == 1 {
  room = FILENAME
  sub(/^.*crv\//, "", room)
  path = room
  if (!sub(/\/.*/, "", room)) room = path ~ /svg/ ? "svg" : "whole"
  id = path
  gsub(/[\/.]/, "_", id)
  name = path
  sub(/^.*\//, "", name)
  print "/// @defgroup " id " " name "\n/// @ingroup " room
  isOpening = 1
}
isOpening && /^\/\// {
  print "/" $0
  next
}
isOpening && /^#pragma once/ {
  if (name in operations) {
    print "///\n/// <div class=\"try\"><a href=\"play/index.html#op=" operations[name] "\">Try it in the playground</a></div>"
  }
  print
  print "/// @{"
  isOpening = 0
  next
}

/^ *\/\/ ---- [^ ]+\.cpp/ {
  closeGroup()
  sub(/^ *\/\/ ---- /, "")
  sub(/ -*$/, "")
  source = $0
  title = ""
  if (match($0, /: /)) {
    source = substr($0, 1, RSTART - 1)
    title = toupper(substr($0, RSTART + 2, 1)) substr($0, RSTART + 3)
  }
  print "/// @name " (title == "" ? source : title "\n/// " source) "\n/// @{"
  inGroup = 1
  next
}

# Doxygen takes the members of a namespace into a group only where it is opened inside.
/^namespace crv \{/ || /^}  \/\/ namespace crv/ {
  closeGroup()
  print "/// @}\n" $0 "\n/// @addtogroup " id "\n/// @{"
  next
}

/^( private:|};)/ { closeGroup() }
/^ (public|protected|private):/ { isProtected = !/public/ }
/^};/ { isProtected = 0 }
/^class CRV_API [A-Za-z]+ / { ofClass = $3 }
/^};/ { ofClass = "" }

/^ *\/\/\/( |$)/ && !/\/\/\/</ {
  match($0, /^ */)
  indent = substr($0, 1, RLENGTH)
  text = $0
  sub(/^ *\/\/\//, "", text)
  commentLine(text)
  inComment = 1
  next
}
inComment {
  closeRows()
  inComment = 0
  if (match($0, /(operator[^A-Za-z ]*|[A-Za-z_0-9]+)\(/)) {
    promisesFor(indent, substr($0, RSTART, RLENGTH - 1))
  }
}

/^struct [A-Za-z]+ {/ { inStruct = 1 }
/^};/ { inStruct = 0 }
inStruct && /^  enum Value/ { print "  /// The values." }
inStruct && /^  [A-Z:a-z<>_]+ [a-zA-Z0-9, ]+( = [^;]+)?;/ {
  said = "///< See the description of the struct."
  if (match($0, /\/\/\/?<? /)) said = "///< " substr($0, RSTART + RLENGTH)
  sub(/ *\/\/.*/, "")
  gsub(/, /, ";  " said "\n  " $1 " ")
  $0 = $0 "  " said
}

{ print }

END {
  closeGroup()
  print "/// @}"
}
