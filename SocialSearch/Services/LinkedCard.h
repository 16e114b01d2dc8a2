#pragma once

#include "QVPlatform/Data.h"
#include "QVSocialSearch/QVSocialProfile.h"

#include <memory>

/// What a vCard says that somebody published. It stands for no record of the address book, its title and company count
/// as WebFinger's, and its name only when a given and a family name are on it. Null when the bytes are no
/// vCard, or one that is far too long for a person's.
std::shared_ptr<QVSocialProfile> profileOfLinkedCard(const qv::Data& bytes);
