#pragma once

namespace sound {

/// Lets the calling thread give way to all others that have work, so that a job on all cores is not felt.
void yieldToOthers();

}  // namespace sound
