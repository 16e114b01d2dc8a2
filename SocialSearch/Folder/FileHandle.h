#pragma once

#include <unistd.h>

#include <utility>

/// An open file, closed when this goes.
class FileHandle {
  public:
    explicit FileHandle(int descriptor) : mDescriptor(descriptor) {}
    ~FileHandle() { close(); }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;

    bool isOpen() const { return mDescriptor >= 0; }
    int get() const { return mDescriptor; }
    /// Says whether everything written has been taken.
    bool close() { return !isOpen() || ::close(std::exchange(mDescriptor, -1)) == 0; }

  private:
    int mDescriptor;
};
