// Runs a program to its end and tells what came of it.
#pragma once

#include <ostream>
#include <string>
#include <vector>

struct ProcessResult {
    int status; // -1 if a signal ended the program
    std::string output;
    std::string errors;
    bool operator==(const ProcessResult&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const ProcessResult& result);

struct ProcessRequest {
    std::vector<std::string> arguments; // the program's path first
    std::string input = {};
    std::string outputFile = {};            // takes standard output in place of the result
    std::vector<std::string> settings = {}; // NAME=VALUE, in front of the environment
};

ProcessResult RunProcess(const ProcessRequest& request);
