# awk -f bundle.awk -v MAIN=desk/desk.js MODULE... MAIN
# Makes one script of modules, so that a page asks once; to be run in the folder that their names begin at. Each module becomes
# a function that runs when it is first needed and gives what the module exports; MAIN follows as it is. Imports and exports
# stand at the beginnings of lines and name what they bring in, as prettier puts them.

function end_module() {
  if (module != "" && module != MAIN) print "return { " exported " };\n};"
}

NR == 1 {
  print "const made = {};\nconst makers = {};"
  print "const need = (name) => (made[name] ??= makers[name]());"
}

FNR == 1 {
  end_module()
  module = folder = FILENAME
  sub(/[^\/]*$/, "", folder)
  exported = ""
  if (module != MAIN) print "makers[\"" module "\"] = () => {"
}

# Comments are for those who read the modules.
/^ *\/\// || /^$/ { next }

/^import / || importing != "" {
  importing = importing " " $0
  if (!/;$/) next
  match(importing, /\{.*\}/)
  names = substr(importing, RSTART, RLENGTH)
  gsub(/ as /, ": ", names)
  match(importing, /"[^"]*"/)
  path = substr(importing, RSTART + 1, RLENGTH - 2)
  if (!sub(/^\.\.\//, "", path)) path = folder substr(path, 3)
  print "const " names " = need(\"" path "\");"
  importing = ""
  next
}

/^export / {
  sub(/^export /, "")
  match($0, /^(async )?(function|class|const) [A-Za-z0-9_]+/)
  count = split(substr($0, RSTART, RLENGTH), words, " ")
  exported = exported (exported == "" ? "" : ", ") words[count]
}

{ print }

END { end_module() }
