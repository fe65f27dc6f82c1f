#pragma once

#include "panes/RowSource.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

/// What a test has a scripted place say, and what that was asked.
struct Script
{
    std::vector<std::string> names; // its rows
    status_t status = B_OK;         // of opening it
    bool isLate = false;            // the test hands the rows over
    bool mayLeave = true;
    std::string log;
};

/// A place on no disk and no server: places lie below each other by their names, "a/b/c".
class ScriptedSource : public norvane::RowSource
{
public:
    using Places = std::map<std::string, Script>;

    ScriptedSource(Places& places, std::string place, std::string folder)
        : fPlaces(places), fPlace(std::move(place)), fFolder(std::move(folder))
    {
        fPlaces[fPlace].log += "+";
    }
    ~ScriptedSource() override { fPlaces[fPlace].log += "-"; }

    /// Hands its rows over.
    void Answer()
    {
        norvane::ListedRows rows;
        rows.folders.push_back(std::make_unique<norvane::DirListItem>());
        for (const std::string& name : fPlaces[fPlace].names) {
            rows.folders.push_back(std::make_unique<norvane::DirListItem>(
                name.c_str(), "0", "Jan 1 10:00", "drwxr-xr-x"));
        }
        fTaker->Opened(*this, std::move(rows));
    }
    void Fail(status_t status) { fTaker->NotOpened(*this, status); }
    void Change() { fTaker->ReadAgain(*this); }

    // RowSource
    status_t Open(const norvane::OpenOrder&, norvane::RowTaker& taker) override
    {
        const Script& script = fPlaces[fPlace];
        fTaker = &taker;
        if (script.status == B_OK && !script.isLate) {
            Answer();
        }
        return script.status;
    }
    std::string Complaint(status_t) const override { return {}; }
    std::unique_ptr<RowSource> Again() const override { return At(fPlace); }
    std::unique_ptr<RowSource> Up() const override
    {
        const std::size_t slash = fPlace.rfind('/');
        return slash != std::string::npos ? At(fPlace.substr(0, slash)) : nullptr;
    }
    std::unique_ptr<RowSource> Into(const norvane::DirListItem& row) const override
    {
        return At(fPlace + "/" + row.GetEntryName());
    }
    std::unique_ptr<RowSource> GoTo(const std::string&) override { return nullptr; }
    bool MayLeave() override { return fPlaces[fPlace].mayLeave; }
    norvane::FolderWork MakingFolder() const override
    {
        return [this](const std::string& name) {
            fPlaces[fPlace].names.push_back(name);
            return B_OK;
        };
    }
    norvane::EntryWork Renaming(const norvane::DirListItem&, const std::string&) const override
    {
        return [] {
            return B_OK;
        };
    }
    bool DeletesForGood() const override { return true; }
    std::optional<norvane::OperationRequest> Delete(const std::vector<norvane::DirListItem*>&,
                                                    bool) override
    {
        return std::nullopt;
    }
    std::unique_ptr<BMessage> MessageFor(const std::vector<norvane::DirListItem*>&) const override
    {
        return std::make_unique<BMessage>(604);
    }
    norvane::DropMeaning MeaningOf(const BMessage&, const norvane::DirListItem*) const override
    {
        return {};
    }
    norvane::PaneMode Mode() const override { return norvane::kFtpMode; }
    std::string HeaderText() const override { return fPlace; }
    std::string PathOf(const norvane::DirListItem& row) const override
    {
        return fPlace + "/" + row.GetEntryName();
    }
    std::string NameAbove() const override { return fPlace.substr(fPlace.rfind('/') + 1); }
    const std::string& LocalFolder() const override { return fFolder; }

private:
    std::unique_ptr<RowSource> At(const std::string& place) const
    {
        return std::make_unique<ScriptedSource>(fPlaces, place, fFolder);
    }

    Places& fPlaces;
    const std::string fPlace;
    const std::string fFolder;
    norvane::RowTaker* fTaker = nullptr;
};
