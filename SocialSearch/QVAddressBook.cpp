#include "QVSocialSearch/QVAddressBook.h"

QVAddressBook::~QVAddressBook() = default;
