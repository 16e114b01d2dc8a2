#include "TIFFMemory.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <new>

namespace qv::imaging {

// Enough for the largest picture as one strip of four channels.
static constexpr tmsize_t kMaxSingleAllocation = 300'000'000;
// A directory that sends the writer this far is broken.
static constexpr std::uint64_t kMaxWritten = 1'000'000'000;

static int dropMessage(TIFF*, void*, const char*, const char*, std::va_list) {
    return 1;
}

static int refuseMapping(thandle_t, void**, toff_t*) {
    return 0;
}

static void ignoreMapping(thandle_t, void*, toff_t) {
}

std::unique_ptr<TIFFMemory> TIFFMemory::reading(const Data& data) {
    std::unique_ptr<TIFFMemory> memory(new TIFFMemory(&data));
    return memory->open("rm") ? std::move(memory) : nullptr;
}

std::unique_ptr<TIFFMemory> TIFFMemory::writing() {
    std::unique_ptr<TIFFMemory> memory(new TIFFMemory(nullptr));
    return memory->open("w") ? std::move(memory) : nullptr;
}

bool TIFFMemory::open(const char* mode) {
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    if (!options) return false;
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, kMaxSingleAllocation);
    TIFFOpenOptionsSetErrorHandlerExtR(options, dropMessage, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options, dropMessage, nullptr);
    mHandle = TIFFClientOpenExt("memory", mode, this, read, write, seek, leaveOpen, size, refuseMapping, ignoreMapping,
                                options);
    TIFFOpenOptionsFree(options);
    return mHandle != nullptr;
}

void TIFFMemory::close() {
    if (mHandle) TIFFClose(mHandle);
    mHandle = nullptr;
}

tmsize_t TIFFMemory::read(thandle_t self, void* out, tmsize_t count) {
    auto& memory = *static_cast<TIFFMemory*>(self);
    const Data& bytes = memory.bytes();
    if (count <= 0 || memory.mPosition >= bytes.size()) return 0;
    const auto taken = static_cast<std::size_t>(
        std::min<std::uint64_t>(static_cast<std::uint64_t>(count), bytes.size() - memory.mPosition));
    std::memcpy(out, bytes.data() + memory.mPosition, taken);
    memory.mPosition += taken;
    return static_cast<tmsize_t>(taken);
}

// Nothing may be thrown through the library, which is C.
tmsize_t TIFFMemory::write(thandle_t self, void* in, tmsize_t count) try {
    auto& memory = *static_cast<TIFFMemory*>(self);
    if (memory.mSource || count < 0) return 0;
    const std::uint64_t end = memory.mPosition + static_cast<std::uint64_t>(count);
    if (end > kMaxWritten) return 0;
    if (end > memory.mWritten.size()) memory.mWritten.resize(end);
    std::memcpy(memory.mWritten.data() + memory.mPosition, in, static_cast<std::size_t>(count));
    memory.mPosition = end;
    return count;
} catch (const std::bad_alloc&) {
    return 0;
}

toff_t TIFFMemory::seek(thandle_t self, toff_t offset, int from) {
    auto& memory = *static_cast<TIFFMemory*>(self);
    if (from == SEEK_SET) memory.mPosition = offset;
    if (from == SEEK_CUR) memory.mPosition += offset;
    if (from == SEEK_END) memory.mPosition = memory.bytes().size() + offset;
    return memory.mPosition;
}

int TIFFMemory::leaveOpen(thandle_t) {
    return 0;
}

toff_t TIFFMemory::size(thandle_t self) {
    return static_cast<TIFFMemory*>(self)->bytes().size();
}

}  // namespace qv::imaging
