#pragma once

namespace varnhold::services {

// Gives every signal its usual effect again. What a caller ignores or blocks would otherwise be
// handed down to a program that is started from here, through exec.
void resetSignals();

} // namespace varnhold::services
