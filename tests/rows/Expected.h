#pragma once

#include "Steps.h"

#include <set>
#include <string>
#include <vector>

/// What a list shows of a folder by the rules of a pane, kept step by step: which rows there are,
/// in which order, and which are marked or selected. As plain and slow as it can be.
class Expected
{
public:
    struct Row
    {
        std::string name;
        bool isFolder = false;
        bool isMarked = false;
        bool isSelected = false;
    };

    /// The rows of a folder as it is now.
    explicit Expected(std::string folder);

    /// Does the step, and follows what it did. False when the kernel refused.
    bool Do(const Step& step, const std::string& outside);
    /// The window is activated: what moved in is listed.
    void Activate();

    std::vector<Row>& Rows() { return fRows; }
    /// Whether a selected row went: which one is selected then depends on where rows stood when it
    /// was heard of.
    bool HasLostSelection() const { return fHasLostSelection; }

private:
    int IndexOf(const std::string& name) const;
    bool IsFolder(const std::string& name) const;
    bool IsOneNode(const Step& step) const;
    void Insert(const std::string& name);
    void Remove(const std::string& name);
    void Rename(const std::string& from, const std::string& to);

    const std::string fFolder;
    std::vector<Row> fRows; // without ".."
    std::set<std::string> fMovedIn;
    bool fHasLostSelection = false;
};
