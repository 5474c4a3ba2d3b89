# Reads a header as Doxygen should see it: a heading that names a source becomes a member group, and
# the comment of a struct speaks for its fields, which may have words of their own behind them.
function closeGroup() {
  if (inGroup) print "/// @}"
  inGroup = 0
}

/^ *\/\/ ---- [^ ]+\.cpp/ {
  closeGroup()
  sub(/^ *\/\/ ---- /, "/// @name ")
  sub(/ -*$/, "")
  print $0 "\n/// @{"
  inGroup = 1
  next
}

/^};/ { closeGroup() }

/^struct [A-Za-z]+ {/ { inStruct = 1 }
/^};/ { inStruct = 0 }
inStruct && /^  [A-Z:a-z<>_]+ [a-zA-Z0-9, ]+( = [^;]+)?;/ && !/\/\/\/</ {
  if (!sub(/ *\/\/ /, "  ///< ")) {
    said = "  ///< See the description of the struct."
    gsub(/, /, ";" said "\n  " $1 " ")
    $0 = $0 said
  }
}

{ print }

END { closeGroup() }
