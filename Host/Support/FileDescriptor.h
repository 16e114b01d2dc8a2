#pragma once

#include <utility>

namespace qvhost {

/// An open file, closed when its owner goes.
class FileDescriptor {
  public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number) : mNumber(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : mNumber(std::exchange(other.mNumber, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(mNumber, other.mNumber);
        return *this;
    }
    ~FileDescriptor() { close(); }

    int number() const { return mNumber; }
    bool isOpen() const { return mNumber >= 0; }
    /// Whether closing reported no late failure to write.
    bool close();

  private:
    int mNumber = -1;
};

}  // namespace qvhost
