#pragma once

namespace sound::test {

/// Runs the tests of a program that listens in real time and returns what main() has to. A virtual machine does not
/// always get the processors that it shows: a test that failed while the machine let nobody run, however urgent,
/// has heard that and not the program, and is run again, four times at most. One that failed while the machine ran
/// has failed.
int runRealTimeTests(int argumentCount, char** arguments);

/// As long as it lives, this thread goes before ordinary ones, where the system lets it: what feeds an output in
/// the program does too.
class UrgentHere
{
public:
    UrgentHere();
    ~UrgentHere();
    UrgentHere(const UrgentHere&) = delete;
    UrgentHere& operator=(const UrgentHere&) = delete;
};

}  // namespace sound::test
