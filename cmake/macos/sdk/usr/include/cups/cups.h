// The version, which CMake reads. macOS 13 has CUPS 2.3.
#pragma once

#define CUPS_VERSION_MAJOR 2
#define CUPS_VERSION_MINOR 3
#define CUPS_VERSION_PATCH 4
