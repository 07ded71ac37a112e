// BRINDLE_API marks what the library exports; everything else in it is hidden. Thrown types must bear it, so that a
// caller's handler recognises them across the library boundary.
#pragma once

#define BRINDLE_API __attribute__((visibility("default")))
