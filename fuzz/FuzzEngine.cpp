// libFuzzer entry point: every input becomes one calculator situation, checked from scratch with a
// fresh Calc so that a crash reproduces from its input alone.

#include <cstddef>
#include <cstdint>

#include "Calc.h"
#include "EngineInvariants.h"
#include "FuzzCase.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const vantrel::fuzz::FuzzCase fuzzCase(data, size);
    vantrel::Calc calc;
    calc.setFps(fuzzCase.rateCode());
    vantrel::fuzz::EngineInvariants(calc, fuzzCase).check();
    return 0;
}
