# Prints the sections of docs/tolerances.md. A named constant is constexpr and begins with k; those
# that stand together share the comment above them and those behind them.
BEGIN { FS = " = |;" }

FNR == 1 { endRow(); file = FILENAME }

!/^ *((inline|static) )?constexpr [^(=]* k[A-Z][^(=]* = / {
  if (constants != "" || !/^ *\/\//) endRow()
  if (sub(/^ *\/\/+/, "")) purpose = purpose $0
  next
}

{
  while (!/;/ && (getline following) > 0) $0 = $0 following
  if (/ double / && !/numeric_limits/) isTolerance = 1
  name = $1
  value = $2
  sub(/\[.*/, "", name)
  sub(/.* /, "", name)
  gsub(/  +/, " ", value)
  constants = constants (constants == "" ? "" : "<br>") "`" name "` = " value
  if (sub(/.*; *\/\//, "")) purpose = purpose $0
}

END { endRow(); exit faults }

function endRow() {
  if (isTolerance && purpose == "") {
    print file ": neither unit nor purpose of " constants >"/dev/stderr"
    faults = 1
  }
  if (constants != "") {
    if (file != section) print "\n## " substr(file, 5) "\n\n| constant | purpose |\n|---|---|"
    section = file
    gsub(/\|/, "\\|", purpose)
    print "| " constants " |" purpose " |"
  }
  constants = purpose = isTolerance = ""
}
