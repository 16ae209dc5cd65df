#!/bin/sh
# A filter of CUPS that appends a line about its job to a file: number, printer, title, bytes of the document, options.
[ $# -ge 5 ] && size=$(wc -c <"${6:-/dev/stdin}") &&
  printf '%s\t%s\t%s\t%s\t%s\n' "$1" "$PRINTER" "$3" "$size" "$5" >>"$TANDEM_TRIM_RECORDS/lines"
