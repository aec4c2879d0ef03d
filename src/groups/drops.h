#pragma once

namespace varnhold {

// What a row under the pointer says will happen to what is dropped there.
enum class DropProposal { move };

// How a change of a list should come to be seen.
enum class ListMotion {
    none,
    spring, // rows swing into their new places
};

} // namespace varnhold
