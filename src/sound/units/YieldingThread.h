#pragma once

namespace sound {

/// Lets the calling thread give way to all others that have work, so that a job on all cores is not felt. A
/// priority that the thread has inherited is given up.
void yieldToOthers();

}  // namespace sound
