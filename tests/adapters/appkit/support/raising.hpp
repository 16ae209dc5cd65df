#pragma once

/// Raises the core's exceptions from code that is compiled as the core is.
namespace tandemtrim::raising {

void badAlloc();
void invalidArgument();
void outOfRange();
void runtimeError();

}  // namespace tandemtrim::raising
