#pragma once

#include "viewer/TextEncoding.h"

#include <Font.h>
#include <Node.h>

#include <memory>
#include <string>

class BTextContents;

namespace norvane {

/// How much of a file is read. Units: bytes.
struct TextLimits
{
    /// So much of it is shown at most.
    int64 most = int64{512} * 1024 * 1024;
    /// Of a larger one that much is shown before the rest is read.
    int64 first = int64{256} * 1024;
    /// In a larger one the widest line is not looked for.
    int64 measured = int64{64} * 1024 * 1024;
};

/// What is to be said of it; empty texts when there is nothing to say.
struct TextOutcome
{
    std::string trouble;                         // why nothing could be read
    std::string remark;                          // how much was, when that is not all
    TextEncoding encoding = TextEncoding::kUtf8; // what it was read as
    int64 bytesRead = 0;                         // how far it was converted
    node_ref node;                               // of the file
};

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

/// Reads a file as a text in some encoding, and as long as it is when that begins: UTF-8 byte for
/// byte.
///
/// Thread: any; it waits for the disk.
TextOutcome ReadText(const std::string& path, TextEncoding encoding, const BFont& font,
                     TextTaker& taker, const TextLimits& limits = TextLimits());

} // namespace norvane
