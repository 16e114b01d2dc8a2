#pragma once

namespace qv {

/// To be called before each use of the crypto library, from any thread. As it comes, the library cleans up while the
/// process ends, under the hands of threads that still talk to a server; this asks it not to. It decides only when
/// nobody in the process used the library before.
void readyCryptoLibrary();

}  // namespace qv
