#pragma once

#include <filesystem>

namespace tandemtrim::host {

/// The user's home folder.
std::filesystem::path homeFolder();

}  // namespace tandemtrim::host
