# Prints the rows of docs/methods.md from the columns that maps.sh asks ctags for, and, as errors,
# what is wrong with the headings.
BEGIN { FS = "\t" }

{ file = $1; kind = $3; access = $4; scope = $5; name = $6; signature = $7; properties = $8 }

# A heading holds until the next one, and no header that has one does without.
file != previous { heading = ""; previous = file }
kind == "heading" {
  heading = file
  sub(/[^\/]*$/, name, heading)
  headings[file ": " heading] = isHeaded[file] = 1
}

kind == "typedef" { alias[file, name] = substr($9, index($9, ":") + 1) }
kind ~ /class|struct/ && access == "private" { isPrivate[scope "::" name] = 1 }
kind !~ /function|prototype/ { next }

{ key = scope "::" name typesOf(signature) }

kind == "function" || properties ~ /default|pure/ { home[key] = file }

# A declaration; a definition further down the header has no access, or comes second.
file ~ /\.h$/ && (scope == "" || access != "-") && properties !~ /delete/ && !(key in header) {
  keys[++count] = key
  header[key] = file
  headingOf[key] = heading
  if (access != "private" && !(scope in isPrivate) && name !~ /^~/) row[key] = rowOf()
}

END {
  for (i = 1; i <= count; ++i) {
    key = keys[i]
    where = header[key] ": "
    if (key in row) print row[key] substr(home[key], 5) " |"
    if (home[key] == "") fault(where key " is defined nowhere")
    else if (home[key] == headingOf[key]) isTrue[where home[key]] = ++uses
    else if (home[key] != header[key] && header[key] in isHeaded)
      fault(where key " is defined in " home[key] ", and no heading above it says so")
  }
  for (line in headings) {
    if (!(line in isTrue)) fault(line " defines nothing that stands under its heading")
  }
  if (!uses) fault("ctags finds nothing under headings")
  exit faults
}

function fault(text) {
  print text >"/dev/stderr"
  faults = 1
}

# What tells one overload from another: the arguments without names, aliases resolved.
function typesOf(arguments,    types, word) {
  gsub(/ [A-Za-z_][A-Za-z_0-9]*,/, ",", arguments)
  gsub(/ [A-Za-z_][A-Za-z_0-9]*\)/, ")", arguments)
  while (match(arguments, /[A-Za-z_][A-Za-z_0-9]*/)) {
    word = substr(arguments, RSTART, RLENGTH)
    if ((file, word) in alias) word = alias[file, word]
    types = types substr(arguments, 1, RSTART - 1) word
    arguments = substr(arguments, RSTART + RLENGTH)
  }
  return types arguments
}

# The row without its last cell, in the project's format.
function rowOf() {
  sub(/operator /, "operator", name)
  gsub(/, */, ", ", signature)
  gsub(/ &/, "\\&", signature)
  gsub(/ \*/, "*", signature)
  gsub(/\(\* /, "(*", signature)
  return "| `" name "` | " (scope == "" ? "" : "`" scope "`") \
    (access == "protected" ? ", protected" : "") " | `" signature "` | "
}
