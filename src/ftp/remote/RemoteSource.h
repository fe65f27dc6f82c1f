#pragma once

#include "ftp/remote/RemoteConnection.h"
#include "panes/RowSource.h"

#include <memory>
#include <string>

namespace norvane {

/// A folder on a server as what a list shows; before there is a connection, the empty place where
/// one waits for it.
///
/// Sources of one connection share it; with the last of them it is let go. A folder is listed on
/// the connection's thread, and its rows come later.
class RemoteSource : public RowSource
{
public:
    /// Where one waits for the connection of a session; opening it begins to connect. `localFolder`
    /// is the one to come back to.
    RemoteSource(const std::string& sessionFile, const ConnectionListeners& listeners,
                 std::string localFolder);
    ~RemoteSource() override;

    // RowSource
    status_t Open(const OpenOrder& order, RowTaker& taker) override;
    void Proceed() override;
    void NewsWhileShown() override;
    void TakeReply(const BMessage& reply) override;
    bool CancelWork() override { return fConnection->Cancel(); }
    std::string Complaint(status_t status) const override;
    std::unique_ptr<RowSource> Again() const override;
    std::unique_ptr<RowSource> Up() const override;
    std::unique_ptr<RowSource> Into(const DirListItem& row) const override;
    const entry_ref* EntryToOpen(const DirListItem&) const override { return nullptr; }
    std::unique_ptr<RowSource> GoTo(const std::string& folder) override;
    bool MayLeave() override;
    FolderWork MakingFolder() const override;
    EntryWork Renaming(const DirListItem& row, const std::string& newName) const override;
    bool DeletesForGood() const override { return true; }
    std::optional<OperationRequest> Delete(const std::vector<DirListItem*>& rows,
                                           bool isForGood) override;
    std::unique_ptr<BMessage> MessageFor(const std::vector<DirListItem*>& rows) const override;
    DropMeaning MeaningOf(const BMessage& entries, const DirListItem* onto) const override;
    PaneMode Mode() const override { return kFtpMode; }
    std::string HeaderText() const override;
    std::string FooterText(const FolderTotals& selected, const FolderTotals& all) const override;
    std::string PathOf(const DirListItem& row) const override;
    std::string NameAbove() const override;
    const std::string& LocalFolder() const override { return fLocalFolder; }

private:
    /// What the connection's thread finds out.
    struct Listing;

    /// A folder of the same server: `base` is where it is asked for ("": where the connection is),
    /// `step` the name from there ("": none).
    RemoteSource(const RemoteSource& from, std::string base, std::string step);
    std::unique_ptr<RowSource> Step(const std::string& name) const;
    void BeginListing();
    void AskForPassword();
    bool HasEntry(const std::string& name) const;
    void AddHost(BMessage* request) const;
    OperationRequest UploadOf(const BMessage& entries) const;

    const std::shared_ptr<RemoteConnection> fConnection;
    const ConnectionListeners fListeners;
    const std::string fLocalFolder;
    const std::string fBase;
    const std::string fStep;
    const bool fIsConnecting = false; // the place where one waits
    const bool fIsFirst = false;      // the first folder of a connection
    RowTaker* fTaker = nullptr;       // borrowed; from Open() on
    std::shared_ptr<Listing> fListing;
    bool fHasHandedOver = false;
    std::string fPath; // as the server names it; "" before it is listed
    BMessenger fPrompt;
};

} // namespace norvane
