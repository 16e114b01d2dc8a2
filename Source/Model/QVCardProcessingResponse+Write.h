#pragma once

#include "QVCardScan/QVCardProcessingResponse.h"

// The category `Write` of `QVCardProcessingResponse`: setters of what is read-only to the host. The framework calls
// them on the operation's thread before the response is published; the header is not installed. Receiver first.

/// `setOriginalNoteUUID:`
void setOriginalNoteUUID(QVCardProcessingResponse& response, QVString originalNoteUUID);
/// `setContactName:`
void setContactName(QVCardProcessingResponse& response, QVString contactName);
/// `setContactEmails:`
void setContactEmails(QVCardProcessingResponse& response, QVStringArray contactEmails);
/// `setContactPhones:`
void setContactPhones(QVCardProcessingResponse& response, QVStringArray contactPhones);
/// `setCardImages:`
void setCardImages(QVCardProcessingResponse& response, QVImageArray cardImages);
/// `setErrors:`
void setErrors(QVCardProcessingResponse& response, QVErrorArray errors);
