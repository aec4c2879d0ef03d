#pragma once

namespace varnhold::platform {

// Frees the program of what whoever starts it may have left it with: signals that are blocked,
// children whose ends are thrown away, standard streams that are closed, and the column count of a
// terminal, at which the process listing of the orphan sweep would be cut. Signals that are ignored
// on purpose, as under nohup, stay so. The first thing that main() does.
void shedInheritedState();

} // namespace varnhold::platform
