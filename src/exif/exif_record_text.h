#pragma once
// A plain-text dump of an ExifRecord, one Name=value line per field, for the
// batch front end and for comparing records in tests.

#include <string>

#include "exif/exif_record.h"

namespace tivox {

class CExifReader;

// Bytes below 0x20 and the backslash escaped as \n, \t, \\ or \xNN.
std::string EscapeText(const std::string& text);

// "Version=..." to "ThumbnailSize=...", each line ending in "\n"; floats with
// nine significant digits.
std::string RecordFieldsText(const ExifRecord& record);

// The fields, then "IsExif=0|1" and "lastError=<text>".
std::string ReaderText(const CExifReader& reader);

} // namespace tivox
