#pragma once

/// Everything that a host of the library needs.

#include "QVCardScan/QVBizCardManager.h"
#include "QVCardScan/QVBizCardParser.h"
#include "QVCardScan/QVBusinessCard.h"
#include "QVCardScan/QVBusinessCardField.h"
#include "QVCardScan/QVCardProcessingError.h"
#include "QVCardScan/QVCardProcessingOperation.h"
#include "QVCardScan/QVCardProcessingRequest.h"
#include "QVCardScan/QVCardProcessingResponse.h"
#include "QVCardScan/QVCardScanDefines.h"
#include "QVCardScan/QVCardScanResultFormatter.h"
#include "QVCardScan/QVCardScanTypes.h"
#include "QVCardScan/QVCardUtilities.h"
#include "QVCardScan/QVContactNoteDataSource.h"
#include "QVCardScan/QVNoteGenerator.h"
#include "QVCardScan/QVVeltoContact.h"
#include "QVCardScan/QVVeltoContactField.h"
