#include "Support/FileDescriptor.h"

#include <unistd.h>

namespace qvhost {

bool FileDescriptor::close() {
    const int number = std::exchange(mNumber, -1);
    return number < 0 || ::close(number) == 0;
}

}  // namespace qvhost
