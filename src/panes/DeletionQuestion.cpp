#include "panes/DeletionQuestion.h"

#include "fileops/engine/ProblemList.h"

namespace norvane {

namespace {

constexpr std::size_t kNamed = 20;

} // namespace

std::string DeletionQuestion(const std::vector<std::string>& names, bool isForGood)
{
    if (names.size() > kNamed) {
        return std::string("Do you really want to ") + (isForGood ? "permanently " : "") +
               "delete the " + std::to_string(names.size()) + " selected files/folders?";
    }
    std::string text = isForGood
                           ? "Do you really want permanently delete the following files/folders:"
                           : "Do you really want to delete the following files/folders:";
    for (const std::string& name : names) {
        text += "\n\t" + ShownName(name);
    }
    return text;
}

} // namespace norvane
