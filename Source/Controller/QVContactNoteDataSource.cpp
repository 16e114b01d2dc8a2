#include "QVCardScan/QVContactNoteDataSource.h"

#include "QVCardScan/QVVeltoContact.h"

std::shared_ptr<QVVeltoContact> QVContactNoteDataSource::contactMatchingFullName(const QVString& /*fullName*/,
                                                                                 const QVString& /*firstName*/,
                                                                                 const QVString& /*lastName*/,
                                                                                 const QVString& /*email*/,
                                                                                 const QVString& /*phone*/) {
    return nullptr;
}
