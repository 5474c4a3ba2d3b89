# A heading in a header names the source of what is declared below it, whatever its access. Reads
# the headers, then the sources; a source is held to its heading if it has one, and every
# Class_topic.cpp must have one.
FNR == 1 {
  folder = FILENAME
  sub(/[^\/]*$/, "", folder)
  topic = FILENAME ~ /\.cpp$/ ? FILENAME : ""
  isHidden = 0  # in a namespace: an internal header declares it, or none
  isSource[topic] = 1
}

/^ *\/\/\/? (@name|----) [^ ]+\.cpp/ {
  topic = folder $3
  sub(/:$/, "", topic)
  isHeaded[topic] = 1
}

/^ *(\/\/|#)/ { next }
/^namespace/ { isHidden = 1 }
/^}  \/\/ namespace/ { isHidden = 0 }

FILENAME ~ /\.h$/ || (!isHidden && /^[A-Za-z]/) {
  line = $0
  while (match(line, /(operator[^A-Za-z ]*|[A-Za-z_0-9]+)\(/)) {
    name = substr(line, RSTART, RLENGTH - 1)
    line = substr(line, RSTART + RLENGTH)
    if (FILENAME ~ /\.h$/) {
      isDeclared[topic, name] = 1
      continue
    }
    if ((topic in isHeaded || topic ~ /_/) && !((topic, name) in isDeclared))
      fault(topic " defines " name ", which is not declared under its heading")
    break
  }
}

END {
  for (heading in isHeaded) {
    if (!(heading in isSource)) fault("a heading names " heading ", which is not there")
  }
  exit faults
}

function fault(text) {
  print text
  faults = 1
}
