#!/bin/sh
# Prints the manual page of workbench-cli: commands and options as the program tells them itself.
# Usage: manpage.sh WORKBENCH_CLI
set -eu
program=$1

escaped() {
  sed -e 's/\\/\\e/g' -e 's/-/\\-/g' -e "s/^[.']/\\\\\&&/"
}

# The help of a command: its summary, then options and arguments, each with the lines of its text joined.
command_text() {
  "$program" "$1" --help | escaped | awk '
    NR == 1 { sub(/^Usage: /, ""); sub(/\[options\]/, "[OPTIONS]"); print ".SS " $2; print ".B " $0; print ".PP"; next }
    /^(Options|Arguments):$/ || /^$/ { next }
    /^  [^ ]/ { sub(/^  /, ""); split($0, part, /   */); print ".TP\n.B " part[1] "\n" part[2]; next }
    { sub(/^ +/, ""); print }'
}

cat <<'TEXT'
.TH WORKBENCH\-CLI 1 "" "Workbench" "User Commands"
.SH NAME
workbench\-cli \- view, convert and pack the resource files of a game
.SH SYNOPSIS
.B workbench\-cli
.I COMMAND
.RI [ OPTIONS ]
.I ARGUMENTS
.br
.B workbench\-cli
.RI [ COMMAND ]
.B \-\-help
.br
.B workbench\-cli \-\-version
.SH DESCRIPTION
Does without a window what
.BR workbench (1)
does with one. Inside archives folders are parted by \(rs; / does as well. Files that are already there are replaced
only with
.BR \-\-force ;
.B unpack
always replaces them.
.SH COMMANDS
TEXT
for command in $("$program" --help | sed -n 's/^  \([a-z]*\) .*/\1/p'); do
  command_text "$command"
done
cat <<'TEXT'
.SH EXIT STATUS
.TP
.B 0
All was done.
.TP
.B 1
The command failed, or an entry of an archive could not be unpacked.
.TP
.B 2
The program was called wrongly.
.SH SEE ALSO
.BR workbench (1)
TEXT
