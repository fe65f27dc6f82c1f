#include "prefs/GeneralOptionsView.h"

#include "MessageCodes.h"
#include "panes/DatePattern.h"
#include "settings/Preferences.h"

#include <CheckBox.h>
#include <InterfaceDefs.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>

#include <algorithm>
#include <cstring>
#include <ctime>

namespace norvane {

namespace {

constexpr char kFormatField[] = "Date Format"; // of a kDateFormatChosen
constexpr float kDivider = 100;
constexpr float kFieldRight = 300;
constexpr rgb_color kGrey = {216, 216, 216, 255};

const char* const kFormats[] = {"%D %R", "%D %T", "%a %b %d %x %Y"};

const char* FormatOf(const BMenuItem& item)
{
    return item.Message()->GetString(kFormatField, "");
}

} // namespace

GeneralOptionsView::GeneralOptionsView(BRect frame)
    : BView(frame, "foo", B_FOLLOW_ALL_SIDES, B_WILL_DRAW)
{
    SetViewColor(kGrey);
    SetLowColor(kGrey);
    AddDateFormats(frame);
    fProgress = AddSwitch(frame, 88, "ShowProgressBar", "Show Progress Bar?");
    fHeader = AddSwitch(frame, 105, "ShowHeader", "Show Header?");
    fFooter = AddSwitch(frame, 122, "ShowFooter", "Show Footer?");
}

void GeneralOptionsView::AddDateFormats(BRect frame)
{
    fFormats = new BPopUpMenu("Date Format");
    const auto now = static_cast<int64>(std::time(nullptr));
    for (const char* format : kFormats) {
        auto* chosen = new BMessage(kDateFormatChosen);
        chosen->AddString(kFormatField, format);
        fFormats->AddItem(new BMenuItem(DatePattern::For(format).Format(now).c_str(), chosen));
    }
    const BRect place(frame.left, frame.top + 22, kFieldRight, frame.top + 42);
    fFormatField = new BMenuField(place, "DateFormat", "Select Date Fomat", fFormats);
    AddChild(fFormatField);
    fFormatField->SetDivider(kDivider);
    // The longest date has room whatever language and letters it is in, while the page has.
    float width = 0;
    float height = 0;
    fFormatField->GetPreferredSize(&width, &height);
    const float room = Bounds().right - place.left;
    fFormatField->ResizeTo(std::min(std::max(width, place.Width()), room), place.Height());
}

BCheckBox* GeneralOptionsView::AddSwitch(BRect frame, float top, const char* name,
                                         const char* label)
{
    const BRect place(frame.left, frame.top + top, frame.right - 10, frame.top + top + 20);
    auto* box = new BCheckBox(place, name, label, nullptr);
    AddChild(box);
    return box;
}

void GeneralOptionsView::SetTo(const Preferences& preferences)
{
    for (int32 i = 0; i < fFormats->CountItems(); i++) {
        BMenuItem* item = fFormats->ItemAt(i);
        item->SetMarked(preferences.dateFormat == FormatOf(*item));
    }
    fProgress->SetValue(preferences.showsProgress ? B_CONTROL_ON : B_CONTROL_OFF);
    fHeader->SetValue(preferences.showsHeader ? B_CONTROL_ON : B_CONTROL_OFF);
    fFooter->SetValue(preferences.showsFooter ? B_CONTROL_ON : B_CONTROL_OFF);
}

void GeneralOptionsView::GetSwitches(Preferences* preferences) const
{
    preferences->showsProgress = fProgress->Value() != B_CONTROL_OFF;
    preferences->showsHeader = fHeader->Value() != B_CONTROL_OFF;
    preferences->showsFooter = fFooter->Value() != B_CONTROL_OFF;
}

void GeneralOptionsView::FocusFirst()
{
    fFormatField->MakeFocus(true);
}

} // namespace norvane
