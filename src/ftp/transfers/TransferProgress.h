#pragma once

#include "fileops/engine/OperationUI.h"

#include <string>

namespace norvane {

/// Tells the person how far the files of a transfer are, one after the other.
///
/// Thread: the operation's.
class TransferProgress
{
public:
    /// Ownership: borrows `ui` for its own life.
    explicit TransferProgress(OperationUI& ui) : fUI(ui) {}

    /// The lines that are shown from now on.
    void SetPaths(const std::string& from, const std::string& to)
    {
        fStep.from = from;
        fStep.to = to;
    }
    void Begin(const std::string& name)
    {
        fStep.baseBytes += fStep.bytes;
        fStep.name = name;
        fStep.percent = 0;
        fStep.bytes = 0;
        fStep.isNew = true;
        fUI.Transferring(fStep);
        fStep.isNew = false;
    }
    void Move(int32 percent, int64 bytes)
    {
        fStep.percent = percent;
        fStep.bytes = bytes;
        fUI.Transferring(fStep);
    }

private:
    OperationUI& fUI;
    TransferStep fStep;
};

} // namespace norvane
