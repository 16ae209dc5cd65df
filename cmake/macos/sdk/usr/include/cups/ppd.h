// The part of CUPS that the sources use, as its public documentation describes it.
#pragma once

typedef struct ppd_file_s ppd_file_t;

typedef struct ppd_attr_s {
  char name[41];
  char spec[41];
  char text[81];
  char* value;
} ppd_attr_t;

extern "C" ppd_attr_t* ppdFindAttr(ppd_file_t* ppd, const char* name, const char* spec)
    __attribute__((deprecated("Use cupsCopyDestInfo and friends instead.")));
