#!/bin/sh
# A filter of CUPS that appends a line about its job to a file: number, printer and options. It starts no other process.
[ $# -ge 5 ] && printf '%s\t%s\t%s\n' "$1" "$PRINTER" "$5" >>"$TANDEM_TRIM_RECORDS/lines"
