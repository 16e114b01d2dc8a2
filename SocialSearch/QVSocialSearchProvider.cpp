#include "QVSocialSearch/QVSocialSearchProvider.h"

QVSocialSearchProvider::~QVSocialSearchProvider() = default;
