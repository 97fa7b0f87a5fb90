#pragma once

// Runs a program as a child process with the given standard input and collects its standard
// output, standard error and exit status. Input and output are pumped together through
// poll(), so a child that writes much before it has read everything cannot block the test.

#include <string>
#include <vector>

namespace locmgr::testing {

struct ProcessResult {
    int exitStatus = -1;  // -1 when the child did not exit normally
    std::string out;
    std::string err;
};

ProcessResult RunProcess(const std::vector<std::string>& argv, const std::string& input = "");

// The lines of a program's output, without their line feeds.
std::vector<std::string> Lines(const std::string& text);

}  // namespace locmgr::testing
