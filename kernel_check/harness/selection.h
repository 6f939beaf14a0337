// Which functions and variants the user asked for.
#pragma once

#include <string>
#include <vector>

#include "kernel_check/variants/functions.h"

namespace kernel_harness {

using quill::test::FunctionVariant;
using quill::test::KernelFunction;
using quill::test::Machine;

// One variant of one function; both live as long as the list of functions.
struct Selected {
    const KernelFunction* function;
    const FunctionVariant* variant;
    bool runs;  // this machine has what it needs
};

// Empty names select all. fails: std::invalid_argument, with the existing names, when nothing matches.
std::vector<Selected> select(const std::vector<KernelFunction>& functions, const Machine& machine,
                             const std::string& function, const std::string& variant);

// "num_out=80 step=2"
std::string described(const quill::test::Numbers& numbers);

// What a variant needs and `machine` lacks, such as "avx".
std::string missing(const FunctionVariant& variant);

}  // namespace kernel_harness
