#include "fileops/engine/OperationDesk.h"

namespace norvane {

std::string OperationDesk::Summary() const
{
    std::string text = fProblems.IsEmpty() ? "" : fProblems.Text();
    if (fWithoutAttributes > 0 && fAttributesAnswer == AttributesAnswer::kMoveWithout) {
        text += text.empty() ? "" : "\n\n";
        text += "Moved without some of their attributes: " + std::to_string(fWithoutAttributes) +
                (fWithoutAttributes == 1 ? " item." : " items.");
    } else if (fWithoutAttributes > 0) {
        text += text.empty() ? "" : "\n\n";
        text += "Left for the sake of their attributes: " + std::to_string(fWithoutAttributes) +
                (fWithoutAttributes == 1 ? " item." : " items.");
    }
    return text;
}

void OperationDesk::AskOverwrite(const OverwriteQuestion& question)
{
    fBeforeWaiting();
    if (!IsStopped()) {
        fUI.AskOverwrite(question);
    }
}

AttributesAnswer OperationDesk::AskAboutAttributes()
{
    if (!fAttributesAnswer) {
        fBeforeWaiting();
        fAttributesAnswer = fUI.AskAboutAttributes();
    }
    fWithoutAttributes++;
    return *fAttributesAnswer;
}

void OperationDesk::Tell(const std::string& name, ItemAlert alert)
{
    const auto [told, isFirst] = fTold.try_emplace(alert, name);
    if (isFirst) {
        fBeforeWaiting();
        fUI.Tell(name, alert);
        return;
    }
    // What comes more often would end in as many alerts as there are items.
    if (!told->second.empty()) {
        NoteProblem(told->second, ReasonOf(alert));
        told->second.clear();
    }
    NoteProblem(name, ReasonOf(alert));
}

void OperationDesk::NoteProblem(const std::string& name, const std::string& reason)
{
    fProblems.Add(name, reason);
    fUI.NoteProblem(name, reason);
}

} // namespace norvane
