// A PNG whose sums are wrong is refused before anything in it is looked at, and chance never hits upon right ones:
// every change is followed by sums that are.

#include <cstddef>
#include <cstdint>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* bytes, std::size_t count, std::size_t most);
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t count, std::size_t most, unsigned seed);

namespace {

constexpr std::size_t kSignature = 8;
/// Length, name and sum.
constexpr std::size_t kFrame = 12;

std::uint32_t sumOf(const std::uint8_t* bytes, std::size_t count) {
    std::uint32_t sum = ~std::uint32_t{0};
    for (std::size_t i = 0; i < count; ++i) {
        sum ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1U) ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    return ~sum;
}

std::uint32_t numberAt(const std::uint8_t* bytes) {
    return std::uint32_t{bytes[0]} << 24U | std::uint32_t{bytes[1]} << 16U | std::uint32_t{bytes[2]} << 8U | bytes[3];
}

void putNumber(std::uint8_t* bytes, std::uint32_t number) {
    for (unsigned i = 0; i < 4; ++i)
        bytes[i] = static_cast<std::uint8_t>(number >> (24U - 8U * i));
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t count, std::size_t most, unsigned) {
    const std::size_t size = LLVMFuzzerMutate(bytes, count, most);
    for (std::size_t at = kSignature; at + kFrame <= size;) {
        const std::size_t length = numberAt(bytes + at);
        if (length > size - at - kFrame) break;
        putNumber(bytes + at + 8 + length, sumOf(bytes + at + 4, length + 4));
        at += kFrame + length;
    }
    return size;
}
