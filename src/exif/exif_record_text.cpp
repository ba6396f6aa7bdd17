// Text dump of an ExifRecord.

#include "exif/exif_record_text.h"

#include <algorithm>
#include <cstdio>

#include "exif/exif_reader.h"

namespace tivox {

namespace {

template <std::size_t N> std::string Field(const char (&field)[N]) {
    return std::string(field, std::find(field, field + N, '\0'));
}

void Line(std::string& out, const char* name, const std::string& value) {
    out += name;
    out += '=';
    out += value;
    out += '\n';
}

void Line(std::string& out, const char* name, std::int32_t value) {
    Line(out, name, std::to_string(value));
}

void Line(std::string& out, const char* name, float value) {
    char buffer[64];
    std::snprintf(buffer, sizeof(buffer), "%.9g", double(value));
    Line(out, name, std::string(buffer));
}

} // namespace

std::string EscapeText(const std::string& text) {
    std::string out;
    for (unsigned char c : text) {
        if (c == '\\') {
            out += "\\\\";
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\t') {
            out += "\\t";
        } else if (c < 0x20) {
            char buffer[8];
            std::snprintf(buffer, sizeof(buffer), "\\x%02X", c);
            out += buffer;
        } else {
            out += char(c);
        }
    }
    return out;
}

std::string RecordFieldsText(const ExifRecord& r) {
    std::string out;
    Line(out, "Version", EscapeText(Field(r.Version)));
    Line(out, "CameraMake", EscapeText(Field(r.CameraMake)));
    Line(out, "CameraModel", EscapeText(Field(r.CameraModel)));
    Line(out, "DateTime", EscapeText(Field(r.DateTime)));
    Line(out, "Height", r.Height);
    Line(out, "Width", r.Width);
    Line(out, "Orientation", r.Orientation);
    Line(out, "IsColor", r.IsColor);
    Line(out, "Process", r.Process);
    Line(out, "FlashUsed", r.FlashUsed);
    Line(out, "FocalLength", r.FocalLength);
    Line(out, "ExposureTime", r.ExposureTime);
    Line(out, "ApertureFNumber", r.ApertureFNumber);
    Line(out, "Distance", r.Distance);
    Line(out, "CCDWidth", r.CCDWidth);
    Line(out, "ExposureBias", r.ExposureBias);
    Line(out, "Whitebalance", r.Whitebalance);
    Line(out, "MeteringMode", r.MeteringMode);
    Line(out, "ExposureProgram", r.ExposureProgram);
    Line(out, "ISOequivalent", r.ISOequivalent);
    Line(out, "CompressionLevel", r.CompressionLevel);
    Line(out, "FocalplaneXRes", r.FocalplaneXRes);
    Line(out, "FocalplaneYRes", r.FocalplaneYRes);
    Line(out, "FocalplaneUnits", r.FocalplaneUnits);
    Line(out, "Xresolution", r.Xresolution);
    Line(out, "Yresolution", r.Yresolution);
    Line(out, "ResolutionUnit", r.ResolutionUnit);
    Line(out, "Brightness", r.Brightness);
    Line(out, "Comments", EscapeText(Field(r.Comments)));
    Line(out, "ThumbnailSize", r.ThumbnailSize);
    return out;
}

std::string ReaderText(const CExifReader& reader) {
    std::string out = RecordFieldsText(*reader.record);
    Line(out, "IsExif", std::string(reader.record->IsExif ? "1" : "0"));
    Line(out, "lastError", EscapeText(Field(reader.lastError)));
    return out;
}

} // namespace tivox
