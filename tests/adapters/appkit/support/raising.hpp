#pragma once

/// What the core raises, from code that the core's compiler made.
namespace tandemtrim::raising {

void badAlloc();
void invalidArgument();
void outOfRange();
void runtimeError();

}  // namespace tandemtrim::raising
