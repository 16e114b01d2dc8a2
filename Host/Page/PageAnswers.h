#pragma once

#include "Output/JSON.h"
#include "Page/CardPile.h"
#include "Page/PageRequest.h"
#include "Support/Result.h"

#include <string>

/// Answers of the usual kinds.
namespace qvhost::PageAnswers {

PageAnswer json(const JSON::Value& value, unsigned status = 200);
/// `{"error": message}`, for a person to read.
PageAnswer problem(unsigned status, const std::string& message);
PageAnswer failure(const Failure& failure);
/// The card whole; that it is not there, or not to be had so now, when it is null.
PageAnswer card(const CardPile::Card& card);
/// Something to be kept as a file.
PageAnswer download(std::string bytes, const std::string& type, const std::string& name);

/// The value of a request's body; a discarded one when it is none, or is not said to be one.
JSON::Value body(const PageRequest& request);

}  // namespace qvhost::PageAnswers
