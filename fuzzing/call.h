// From a string of bytes to a call of a public function and its verdict: any bytes give a call.
#pragma once

#include <cstddef>
#include <string>

namespace fuzz {

// The functions that are called: the members, and those that have no row among them.
int functionCount();
std::string functionName(int function);

struct Call {
    int function = 0;
    bool isDriven = false;    // the driver of the function was called instead
    bool isKernel = false;    // or the kernel
    bool isDefective = false; // some argument was refused
    int threads = 1;
    long stackBytes = 0;     // what it used, 0 where that was not measured
    std::string what, wrong; // `wrong` is empty if all is as it shall be
};

// `beforeCall` hears which function it will be.
Call callOf(const unsigned char *bytes, std::size_t size, void (*beforeCall)(int function) = nullptr);

// Counted by a driver that can: what was asked of the heap.
extern volatile unsigned long heapCalls;

} // namespace fuzz
