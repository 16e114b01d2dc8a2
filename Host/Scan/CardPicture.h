#pragma once

#include "QVPlatform/Data.h"
#include "QVPlatform/Image.h"
#include "Support/Result.h"

#include <memory>
#include <string>
#include <vector>

namespace qvhost {

/// A photograph of one side of a card, as it lies in its file.
struct CardPicture {
    std::shared_ptr<qv::Image> image;
    /// The MD5 of the file's bytes: the name under which a note refers to the picture.
    std::string hash;

    /// Reads a picture and looks whether it can be drawn, so that nothing is sent that is none (`WrongCall`).
    static Result<CardPicture> read(const std::string& file);
    /// The same with bytes that are there already; messages call them `name`.
    static Result<CardPicture> ofBytes(qv::Data bytes, const std::string& name);
    /// The same for several; the first failure ends it.
    static Result<std::vector<CardPicture>> readAll(const std::vector<std::string>& files);
};

}  // namespace qvhost
