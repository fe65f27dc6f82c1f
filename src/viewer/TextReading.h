#pragma once

#include <Font.h>

#include <memory>
#include <string>

class BTextContents;

namespace norvane {

/// So much of a file is shown at most.
constexpr int64 kMostTextBytes = int64{512} * 1024 * 1024;
/// Of a larger one the beginning is shown before the rest is read.
constexpr int64 kFirstTextBytes = int64{256} * 1024;
/// In a larger one the widest line is not looked for.
constexpr int64 kMeasuredTextBytes = int64{64} * 1024 * 1024;

/// Who wants a file's text.
class TextTaker
{
public:
    virtual ~TextTaker() = default;

    /// Asked often; false ends the reading.
    virtual bool WantsMore() = 0;
    /// All that was read so far: a large text comes more than once.
    virtual void TakeText(std::unique_ptr<BTextContents> text) = 0;
};

/// Reads a file as the text that it is, byte for byte, and as long as it is when that begins.
/// `trouble` gets why nothing could be read, `remark` why that is not all; empty when there is
/// nothing to say.
///
/// Thread: any; it waits for the disk.
void ReadText(const std::string& path, const BFont& font, TextTaker& taker, std::string* trouble,
              std::string* remark);

} // namespace norvane
