#pragma once

#include <functional>
#include <string>

namespace varnhold::files {

enum class Descend { no, yes };

// Told of each entry: its path and how many levels below the walked folder it stands, a direct
// child being 1. The answer counts for a folder only: whether what is in it is wanted.
using WalkVisitor = std::function<Descend(const std::string& path, int depth)>;

// Walks a folder depth first, a folder before what is in it, names in the order of their bytes.
//
// Hidden entries are left out with all in them. A link is an entry like a file and never followed,
// and a folder that is itself given as a link has no entries. Paths are the folder's as given,
// without trailing slashes, and the names below it. What can't be read is passed over. Keeps no
// state; any thread.
void walk(const std::string& folder, const WalkVisitor& visit);

} // namespace varnhold::files
