# The rooms of the library stand on floors: a file includes its own room and those below it, by
# whole path, and nothing else but the standard library.
BEGIN {
  FS = "[<\">]"
  count = split("foundation bezier curve positionmap accurate svg", rooms, " ")
  for (i = 1; i <= count; ++i) floor[rooms[i]] = i
}

function fault(text) {
  print FILENAME ": " $2 " " text
  faults = 1
}

/^ *# *include *</ && $2 ~ /\// { fault("is not of the standard library") }

/^ *# *include *"/ && $2 != "crv/export.h" {
  split(FILENAME, here, "/")
  split($2, there, "/")
  sub(/\.h$/, "", there[2])  # crv/svg.h is the one header of its room
  if ($2 !~ /^crv\/([^\/]+\/)?(internal\/)?[^\/]+$/ || !(there[2] in floor))
    fault("is not a whole path into a room")
  else if (floor[there[2]] > floor[here[2]]) fault("stands on a higher floor")
}

END { exit faults }
