// How a process ends by the invalid-parameter failure, as the platform's death tests see it. There is one
// implementation per platform.
#pragma once

namespace telvofm::test {

// Whether an exit status is the one that the failure leaves where nothing was installed against it.
bool isInvalidParameterEnding(int exitStatus);
// What is on standard error then, as a regular expression.
extern const char* const invalidParameterMessage;

inline constexpr int judgedGood = 77;
inline constexpr int judgedBad = 78;
// From now on the failure lets `judge` look at the caller's memory before anything else happens, and ends the
// process with the judgement.
void judgeAtInvalidParameter(bool (*judge)());

} // namespace telvofm::test
