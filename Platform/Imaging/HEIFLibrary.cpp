#include "HEIFLibrary.h"

#include <dlfcn.h>

namespace qv::imaging {

template <typename Function>
static bool find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

bool HEIFLibrary::load() {
    void* library = dlopen("libheif.so.1", RTLD_NOW | RTLD_LOCAL);
    if (!library) return false;
    return find(library, "heif_context_alloc", allocateContext) && find(library, "heif_context_free", freeContext) &&
           find(library, "heif_context_read_from_memory_without_copy", readFromMemory) &&
           find(library, "heif_context_get_primary_image_handle", getPrimaryHandle) &&
           find(library, "heif_image_handle_release", releaseHandle) &&
           find(library, "heif_image_handle_get_width", getWidth) &&
           find(library, "heif_image_handle_get_height", getHeight) &&
           find(library, "heif_image_handle_has_alpha_channel", hasAlpha) &&
           find(library, "heif_decode_image", decode) && find(library, "heif_image_get_width", imageWidth) &&
           find(library, "heif_image_get_height", imageHeight) &&
           find(library, "heif_image_get_plane_readonly", getPlane) &&
           find(library, "heif_image_release", releaseImage);
}

const HEIFLibrary* HEIFLibrary::shared() {
    static HEIFLibrary library;
    static const bool isLoaded = library.load();
    return isLoaded ? &library : nullptr;
}

}  // namespace qv::imaging
