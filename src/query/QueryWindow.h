#pragma once

#include "query/QueryCriteria.h"
#include "query/QuerySearch.h"

#include <Invoker.h>
#include <Message.h>
#include <Window.h>

#include <memory>
#include <string>

class BMessageRunner;

namespace norvane {

class AdvancedView;
class GeneralView;

/// Asks for a name, a text, a size and dates, searches all volumes for what fits, and sends the
/// hits to the main window, which shows them in a pane.
///
/// A search runs on threads of its own. Its counts stand in the title; closing the window ends it,
/// and "Query" ends the one before. Thread: its own, but for construction.
class QueryWindow : public BWindow
{
public:
    /// `frame` is what the window is centred on, `handler` receives kQueryResults.
    QueryWindow(BRect frame, BWindow* handler);
    ~QueryWindow() override;

    // BWindow
    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    void BuildContents();
    void AddButtons(BView* ground, float top);
    void GetResults();
    bool MakePredicate(std::string* predicate);
    void SearchEnded(const BMessage& message);
    void ShowCounts();
    void TellUnreadable(const std::string& path);

    GeneralView* fGeneral = nullptr; // children
    AdvancedView* fAdvanced = nullptr;
    // The chosen items of the menus, by their messages' codes.
    QueryCriteria fChoices;
    int32 fVolumes = 0; // kept, of no use

    BInvoker fInvoker; // to the handler
    std::string fPredicate;
    std::unique_ptr<QuerySearch> fSearch; // null while none runs
    std::unique_ptr<BMessageRunner> fCounting;
    int32 fSearches = 0; // how many were begun: the number of the last one
};

} // namespace norvane
