# Reads a header as Doxygen should see it: a heading that names a source becomes a member group.
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

{ print }

END { closeGroup() }
