#include "CryptoLibrary.h"

#include <openssl/crypto.h>

namespace qv {

void readyCryptoLibrary() {
    static const int isReady = OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);
    static_cast<void>(isReady);
}

}  // namespace qv
