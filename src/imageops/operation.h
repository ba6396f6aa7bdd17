#pragma once
// One edit asked for by the user: a code, a kind that says which operands
// follow, and the operands. A plain record that the caller owns; the
// processor only reads it.

#include <cstdint>
#include <string>
#include <utility>

namespace tivox {

enum OperationCode : std::int32_t {
    opRotateLeft = 1,
    opRotateRight = 2,
    opRotate180 = 3,
    opMirrorHorizontal = 4,
    opMirrorVertical = 5,
    opBrightness = 6,
    opContrast = 7,
    opSharpness = 8,
    opGamma = 9,
    opSaturation = 10,
    opDenoise = 11,
    opCrop = 12,
    opResize = 13,
    opNegative = 14,
    opGrayscale = 15,
    opDelete = 16,
    opResetColor = 17,
    opApplyColor = 18,
};

// Which operands a COperation carries.
enum OperationKind : std::int32_t {
    kindPlain = 0,   // no operand
    kindResize = 2,  // text (target folder or empty), width, height
    kindDenoise = 3, // text, empty
    kindRect = 4,    // x, y, width, height in screen pixels
};

struct COperation {
    std::int32_t code = 0;
    std::int32_t kind = kindPlain;
    std::string text;
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;

    static COperation Plain(std::int32_t code) {
        COperation op;
        op.code = code;
        return op;
    }
    static COperation Resize(int width, int height, std::string folder = {}) {
        COperation op;
        op.code = opResize;
        op.kind = kindResize;
        op.text = std::move(folder);
        op.width = width;
        op.height = height;
        return op;
    }
    static COperation Denoise() {
        COperation op;
        op.code = opDenoise;
        op.kind = kindDenoise;
        return op;
    }
    static COperation Crop(int x, int y, int width, int height) {
        COperation op;
        op.code = opCrop;
        op.kind = kindRect;
        op.x = x;
        op.y = y;
        op.width = width;
        op.height = height;
        return op;
    }
};

// Kinds of edits that ApplyEdits can be asked to replay.
enum EditMask : std::int32_t {
    editRedEye = 1,
    editCrop = 2,
    editDenoise = 4,
    editResize = 8,
    editColor = 16,
    editAll = -1,
};

} // namespace tivox
