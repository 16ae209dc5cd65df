// Opens a PPD by libcups and prints four of its attributes: four_attributes FILE
#include <cups/ppd.h>
#include <stdio.h>

int main(int argc, char* argv[]) {
  static const char* const kNames[] = {"MVMaxTandemTrimMarginTop", "MVMaxTandemTrimMarginBottom",
                                       "MVMaxTandemTrimMarginLeft", "MVMaxTandemTrimMarginRight"};
  ppd_file_t* const ppd = argc == 2 ? ppdOpenFile(argv[1]) : NULL;
  if (ppd == NULL) return 1;
  for (int i = 0; i < 4; ++i) {
    const ppd_attr_t* const attribute = ppdFindAttr(ppd, kNames[i], NULL);
    printf("%s\n", attribute == NULL ? "" : attribute->value);
  }
  ppdClose(ppd);
  return 0;
}
