#pragma once
// Rotating and mirroring photo files without decoding their pixels. UI thread.

#include <string>

#include "platform/ui_text.h"

namespace tivox {

class CPhoto;
class IEditHost;
class IPrompt;

// Operation codes of the five buttons, as the processor numbers them.
inline constexpr int kLosslessRotateLeft = 1;
inline constexpr int kLosslessRotateRight = 2;
inline constexpr int kLosslessRotate180 = 3;
inline constexpr int kLosslessMirrorHorizontal = 4;
inline constexpr int kLosslessMirrorVertical = 5;

// Writes the transformed `source` to `target` durably (WriteFileDurably;
// `target` may be `source`) with the codes 1 left, 2 right, 3 half turn,
// 4 mirror left-right, 5 mirror top-bottom. Another code shows
// "JPEG lossless transformation: unsupported" through `prompt` (when given).
// True when the target file was written; else `cause` (when given) gets the
// reason where one is known, naming the file.
bool TransformFile(int code, const std::string& source, const std::string& target,
                   IPrompt* prompt = nullptr, UiText* cause = nullptr);

// Transforms the file at `path` and replaces it durably. False with `error`
// set on failure, as a text that a front end can translate before the file
// name and the cause go in.
bool LosslessTransformPath(int code, const std::string& path, UiText& error,
                           IPrompt* prompt = nullptr);
bool LosslessTransformPath(int code, const std::string& path, std::string& errorText,
                           IPrompt* prompt = nullptr);

// The processor's lossless operation on one photo: transforms its file,
// replaces it durably, rebuilds the thumbnail and the working image at the
// window's sizes and repaints the window. False with `error` set on failure.
bool LosslessTransformPhoto(int code, CPhoto& photo, IEditHost& host, UiText& error,
                            IPrompt* prompt = nullptr);
// The same with the English text rendered.
bool LosslessTransformPhoto(int code, CPhoto& photo, IEditHost& host, std::string& errorText,
                            IPrompt* prompt = nullptr);

} // namespace tivox
