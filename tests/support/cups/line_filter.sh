#!/bin/sh
# A filter of CUPS that adds one line about its job to a file: number, printer and options. Of a small job it is the only process.
[ $# -ge 5 ] && printf '%s\t%s\t%s\n' "$1" "$PRINTER" "$5" >>"$TANDEM_TRIM_RECORDS/lines"
