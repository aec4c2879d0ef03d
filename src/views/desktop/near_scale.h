#pragma once

namespace varnhold {

// Counts a desktop's scale that is within a twentieth of 1 as 1: nobody sees the difference in
// size, but everybody sees blurred lines. Lives while the application object is being made; what
// the user has set for the toolkit himself stays, and children inherit nothing of it. Make it while
// there is no other thread.
class NearScale final {
public:
    NearScale();
    ~NearScale();
    NearScale(const NearScale&) = delete;
    NearScale& operator=(const NearScale&) = delete;

private:
    bool isSet_ = false;
};

// Whether fonts of so many dots per inch come from a scale near 1 that isn't 1. Pure.
[[nodiscard]] bool isNearWhole(double dotsPerInch);

} // namespace varnhold
