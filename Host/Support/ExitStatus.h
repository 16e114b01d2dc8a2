#pragma once

namespace qvhost {

/// What the program tells its caller when it ends.
enum class ExitStatus : int {
    Done = 0,        ///< what was asked for is there; also an answer that holds no card
    Incomplete = 1,  ///< processed, but with errors, or nothing was recognised
    WrongCall = 2,   ///< unknown option, no such file, not an image: nothing was sent
    NotWritten = 3,  ///< the result could not be written

    Interrupted = 130,  ///< a signal ended it early, in good order; as shells have it, 128 and the signal's number
};

}  // namespace qvhost
