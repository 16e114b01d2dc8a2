#include "Recognition/AuthToken.h"

#include "Support/Secrets.h"

namespace qvhost::AuthToken {

Result<std::string> read(const std::optional<std::string>& file) {
    const auto token = Secrets::read({file, {kVariable}, "the server's token, on one line"});
    if (!token) return token.failure();
    if (*token) return (*token)->front();
    return Failure{ExitStatus::WrongCall,
                   std::string("A server given with --server needs its token: name a file that holds it with "
                               "--token-file, or set the environment variable ") +
                       kVariable + "."};
}

}  // namespace qvhost::AuthToken
