#pragma once

#include "query/QueryCriteria.h"

#include <View.h>

#include <array>

class BCheckBox;
class BMenuField;
class BTextControl;

namespace norvane {

/// The page "General" of the query window: what entries are called, and what they hold.
///
/// Of its controls "Archives", "WholeWords", "CaseSensative", "ASCII" and "Volumes" take no part in
/// a search.
class GeneralView : public BView
{
public:
    explicit GeneralView(BRect frame);

    /// The name's field gets the focus.
    void FocusName();
    /// Fills in what was typed here.
    void Tell(QueryCriteria* criteria) const;
    /// Whether files are to be searched for Text().
    bool SearchesText() const;
    /// The text that they are to hold. Lent until it is changed.
    const char* Text() const;

private:
    BTextControl* fName;
    BCheckBox* fFindText;
    BTextControl* fText;
};

/// The page "Advanced": when entries were changed, and how large they are.
class AdvancedView : public BView
{
public:
    explicit AdvancedView(BRect frame);

    /// Fills in what was typed here.
    void Tell(QueryCriteria* criteria) const;
    /// One of the boxes changed: of the two for dates the other one is cleared.
    void DateChoiceChanged(const void* source);

private:
    struct DateFields
    {
        BTextControl* month;
        BTextControl* day;
        BTextControl* year;

        QueryCriteria::Date Date() const;
    };

    DateFields AddDate(float left, float top, const std::array<const char*, 3>& names);

    BCheckBox* fBetween;
    DateFields fFirst;
    DateFields fSecond;
    BCheckBox* fNotOlder;
    BTextControl* fAge;
    BCheckBox* fHasSize;
    BTextControl* fSize;
};

/// The page "Load/Save", which is empty.
class LoadSaveView : public BView
{
public:
    explicit LoadSaveView(BRect frame);
};

} // namespace norvane
