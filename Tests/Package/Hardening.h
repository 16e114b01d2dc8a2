#pragma once

#include "InstalledPackage.h"

#include <regex>
#include <string>
#include <vector>

#if defined(__x86_64__) || defined(__i386__)
#define QV_TEST_X86
#endif

namespace packagetest {

/// What hardens a built file, by the names that `missingHardening` uses.
inline constexpr const char* kAnyAddress = "runs at any address";
inline constexpr const char* kRelocations = "read-only relocations";
inline constexpr const char* kBoundAtOnce = "bound at once";
inline constexpr const char* kStackOfData = "nothing both writable and executable";
inline constexpr const char* kStackProtector = "stack protector";
inline constexpr const char* kCheckedCalls = "checked calls";
inline constexpr const char* kControlFlow = "control-flow protection";
inline constexpr const char* kNoRunPath = "no run path";

/// The calls whose checked form is used whenever it is asked for; others have one only where a size is known. (The
/// standard library takes the address of vsnprintf.)
inline constexpr const char* kAlwaysChecked = "UND (v?f?printf|sn?printf|vsprintf|v?syslog|(sig)?longjmp)@";

/// What a library or program lacks, as readelf tells; nothing is missing from a sound one.
inline std::vector<std::string> missingHardening(const std::filesystem::path& file) {
    const std::string facts = run("readelf", {"-W", "-h", "-l", "-d", "-n", "--dyn-syms", file}).output;
    const auto tells = [&facts](const char* pattern) { return std::regex_search(facts, std::regex(pattern)); };
    const bool isProgram = tells("\\n +INTERP ");
    std::vector<std::string> missing;
    const auto expect = [&missing](bool holds, const char* name) {
        if (!holds) missing.emplace_back(name);
    };
    expect(tells("Type: +DYN"), kAnyAddress);
    expect(tells("\\n +GNU_RELRO "), kRelocations);
    expect(tells("FLAGS_1\\) +Flags:[^\\n]* NOW") || tells("Flags: NOW"), kBoundAtOnce);
    expect(tells("\\n +GNU_STACK [^\\n]* RW  ") && !tells(" RWE "), kStackOfData);
    expect(tells("UND __stack_chk_fail@"), kStackProtector);
    expect(!tells(kAlwaysChecked), kCheckedCalls);
#ifdef QV_TEST_X86
    expect(tells(isProgram ? "x86 feature: .*SHSTK" : "x86 feature: IBT, SHSTK"), kControlFlow);
#endif
    expect(!tells("\\((RPATH|RUNPATH)\\)"), kNoRunPath);
    return missing;
}

}  // namespace packagetest
