#include "viewer/ViewerWindow.h"

#include "MessageCodes.h"
#include "fileops/windows/MessageBox.h"
#include "viewer/FileFollowing.h"
#include "viewer/PatternSearch.h"
#include "viewer/TextFinder.h"
#include "viewer/ViewedText.h"
#include "viewer/ViewerKeys.h"
#include "viewer/iview.h"

#include <AppDefs.h>
#include <Application.h>
#include <Bitmap.h>
#include <FilePanel.h>
#include <MenuBar.h>
#include <MenuItem.h>
#include <Message.h>
#include <Screen.h>
#include <ScrollView.h>
#include <TextContents.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace norvane {

namespace {

constexpr float kBarBreadth = 14;
constexpr float kTextMargin = 3;
// Of an image so much is seen at least.
constexpr float kLeastImage = 32;

void TellError(const char* text)
{
    MessageBox(text, "Error!", "Ok");
}

/// What lies behind everything: entries can be dropped where nothing is shown, too.
class Ground : public BView
{
public:
    explicit Ground(BRect frame)
        : BView(frame, "ground", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_NAVIGABLE)
    {
        SetViewColor(255, 255, 255);
    }
    void KeyDown(const char* bytes, int32 byteCount) override
    {
        if (!ViewerKey(*this, bytes[0])) {
            BView::KeyDown(bytes, byteCount);
        }
    }
    bool TakesDrops() const override { return true; }
};

} // namespace

ViewerWindow::ViewerWindow(BRect frame, const char* path)
    : BWindow(frame, "Viewer", B_DOCUMENT_WINDOW, 0), fFinder(std::make_unique<TextFinder>())
{
    BuildMenus();
    fGround = new Ground(ContentRect());
    AddChild(fGround); // adopted
    fGround->MakeFocus();
    GetType(path);
}

ViewerWindow::~ViewerWindow() = default;

void ViewerWindow::BuildMenus()
{
    fBar = new BMenuBar(BRect(0, 0, 0, 0), "MenuBar");
    BMenu* file = new BMenu("File");
    file->AddItem(new BMenuItem("Open", new BMessage(kOpenPanel), 'O'));
    file->AddSeparatorItem();
    file->AddItem(new BMenuItem("Close", new BMessage(B_QUIT_REQUESTED), 'W'));
    BMenuItem* quit = new BMenuItem("Quit", new BMessage(B_QUIT_REQUESTED), 'Q');
    file->AddItem(quit);
    file->SetTargetForItems(this);
    quit->SetTarget(be_app_messenger);
    fBar->AddItem(file); // adopted
    AddChild(fBar);      // adopted
}

BRect ViewerWindow::ContentRect() const
{
    BRect rect = Bounds();
    rect.top = fBar->Frame().bottom + 1;
    return rect;
}

// Loading

void ViewerWindow::GetType(const char* path)
{
    fPath = path != nullptr ? path : "";
    ShowRemark("");
    fLoading = std::make_unique<FileLoading>(fPath, BMessenger(nullptr, this), *be_plain_font);
}

void ViewerWindow::TakeNews()
{
    FileNews news = fLoading->TakeNews();
    if (news.hasKind) {
        fIsFile = news.isFile;
        OpenFile(news.kind, news.complaints);
    }
    if (news.text != nullptr && fText != nullptr) {
        TakeText(std::move(news.text));
    }
    if (news.image != nullptr && fImage != nullptr) {
        TakeImage(std::move(news.image));
    }
    if (!news.isDone) {
        return;
    }
    if (!news.outcome.trouble.empty()) {
        TakeTrouble(news.outcome.trouble);
    }
    ShowRemark(news.outcome.remark);
    if (fText != nullptr) {
        TextIsRead(news.outcome);
    }
}

void ViewerWindow::OpenFile(ViewedKind kind, const std::vector<const char*>& complaints)
{
    for (const char* complaint : complaints) {
        TellError(complaint);
    }
    switch (kind) {
    case ViewedKind::kNone:
        TellError("No file type, nothing to do.");
        break;
    case ViewedKind::kText:
        AddTextMenu();
        AddText(ContentRect());
        break;
    case ViewedKind::kImage:
        AddImageMenu();
        AddImage(ContentRect());
        break;
    case ViewedKind::kUnknown:
        break;
    case ViewedKind::kError:
        TellError("An error occured, don't be surprised nothing happened.");
        break;
    }
    if (kind != ViewedKind::kNone) {
        AddViewMenu();
    }
}

void ViewerWindow::TakeTrouble(const std::string& trouble)
{
    if (fImage != nullptr) {
        fImage->SetTrouble(trouble);
        RedoSizes();
    } else if (fText != nullptr) {
        constexpr rgb_color kQuiet = {110, 110, 110, 255};
        fText->SetFontAndColor(nullptr, B_FONT_ALL, &kQuiet);
        fText->SetText(("This file cannot be shown: " + trouble + ".").c_str());
    }
}

/// Not all of the file is shown: the window says so, wherever in the text somebody is.
void ViewerWindow::ShowRemark(const std::string& remark)
{
    const std::string name = fPath.substr(fPath.rfind('/') + 1);
    if (!name.empty()) {
        SetTitle((remark.empty() ? name : name + " (" + remark + ")").c_str());
    }
}

// Text

void ViewerWindow::AddTextMenu()
{
    BMenu* menu = new BMenu("Text");
    fWrapItem = new BMenuItem("Wrap Text", new BMessage(kWrapText));
    menu->AddItem(fWrapItem);
    fEdgeItem = new BMenuItem("Wrap to Edge", new BMessage(kWrapToEdge));
    fEdgeItem->SetMarked(true);
    fEdgeItem->SetEnabled(false);
    menu->AddItem(fEdgeItem);
    menu->AddSeparatorItem();
    menu->AddItem(EncodingMenu()); // adopted
    fFollowItem = new BMenuItem("Follow", new BMessage(kFollowFile));
    menu->AddItem(fFollowItem);
    menu->SetTargetForItems(this);
    fBar->AddItem(menu); // adopted
}

void ViewerWindow::AddText(BRect rect)
{
    rect.right -= kBarBreadth;
    rect.bottom -= kBarBreadth;
    fText = new ViewedText(rect);
    AddChild(new BScrollView("TextScroll", fText, B_FOLLOW_ALL_SIDES, 0, true, true,
                             B_FANCY_BORDER)); // adopted
    fText->MakeFocus();
}

void ViewerWindow::TakeText(std::unique_ptr<BTextContents> text)
{
    fText->AdoptText(std::move(text));
    if (fWrapItem->IsMarked()) {
        FrameResized(-1, -1);
    } else {
        UnwrapText();
    }
}

/// Without wrapping, and with it but not to the edge, the text is as wide as its widest line.
void ViewerWindow::UnwrapText()
{
    fWidestLine = std::max({1.0f, fWidestLine, fText->WidestLine()});
    fText->SetTextRect(BRect(0, 0, fWidestLine, fText->Bounds().Height()));
}

void ViewerWindow::ToggleWrap()
{
    const bool wraps = !fWrapItem->IsMarked();
    fWrapItem->SetMarked(wraps);
    fEdgeItem->SetEnabled(wraps);
    fWrapsToEdge = wraps && fEdgeItem->IsMarked();
    if (!wraps) {
        fText->SetWordWrap(false);
    }
    if (!fWrapsToEdge) {
        UnwrapText();
    }
    FrameResized(-1, -1);
    if (wraps) {
        fText->SetWordWrap(true);
    }
}

void ViewerWindow::ToggleWrapToEdge()
{
    if (!fEdgeItem->IsEnabled()) {
        return;
    }
    fEdgeItem->SetMarked(!fEdgeItem->IsMarked());
    fWrapsToEdge = fEdgeItem->IsMarked();
    if (!fWrapsToEdge) {
        UnwrapText();
    }
    FrameResized(-1, -1);
}

void ViewerWindow::FitTextToEdge(float width)
{
    const float left = ConvertFromScreen(fText->ConvertToScreen(fText->Bounds())).left;
    const float room = left + width - kBarBreadth - kTextMargin;
    fText->SetTextRect(BRect(0, 0, std::max(1.0f, room), fText->Bounds().Height()));
}

void ViewerWindow::FrameResized(float width, float height)
{
    const bool isLayout = width == -1 && height == -1;
    if (!isLayout) {
        BWindow::FrameResized(width, height);
    }
    if (fText != nullptr && fWrapsToEdge) {
        FitTextToEdge(isLayout ? Bounds().Width() : width);
    }
}

// Images

void ViewerWindow::AddImageMenu()
{
    BMenu* menu = new BMenu("Image");
    fStretchItem = new BMenuItem("Stretch to Fit", new BMessage(kStretchToFit));
    menu->AddItem(fStretchItem);
    fScaleMenu = new BMenu("Scale");
    fScaleMenu->SetRadioMode(true);
    constexpr std::pair<const char*, float> kScales[] = {
        {"50%", 0.5f}, {"100%", 1.0f}, {"200%", 2.0f}};
    for (const auto& [label, scale] : kScales) {
        auto message = std::make_unique<BMessage>(kScaleImage);
        message->AddFloat("scale", scale);
        message->AddInt32("scale_mode", kFixedScale);
        fScaleMenu->AddItem(new BMenuItem(label, message.release())); // adopted
    }
    fScaleMenu->AddSeparatorItem();
    auto largest = std::make_unique<BMessage>(kScaleImage);
    largest->AddInt32("scale_mode", kLargestFit);
    BMenuItem* largestItem = new BMenuItem("Max", largest.release()); // adopted
    largestItem->SetMarked(true);
    fScaleMenu->AddItem(largestItem);
    fScaleMenu->SetTargetForItems(this);
    menu->AddItem(fScaleMenu); // adopted
    menu->SetTargetForItems(this);
    fBar->AddItem(menu); // adopted
}

void ViewerWindow::AddImage(BRect rect)
{
    rect.right -= kBarBreadth;
    rect.bottom -= kBarBreadth;
    fImage = new TImageView(rect, 0, kLargestFit);
    AddChild(new BScrollView("Image Veiwer", fImage, B_FOLLOW_ALL_SIDES, 0, true, true)); // adopted
    fImage->MakeFocus();
    RedoSizes();
}

void ViewerWindow::TakeImage(std::unique_ptr<BBitmap> image)
{
    fImage->SetImage(std::move(image));
    RedoSizes();
    Zoom();
}

void ViewerWindow::RedoSizes()
{
    if (fImage == nullptr || fShowsHex) {
        return;
    }
    const BRect screen = BScreen(this).Frame();
    float imageWidth = -1;
    float imageHeight = -1;
    fImage->GetMaxSize(&imageWidth, &imageHeight);
    imageWidth = imageWidth < 0 ? screen.Width() : imageWidth;
    imageHeight = imageHeight < 0 ? screen.Height() : imageHeight;
    const float bar = fBar->Frame().bottom;
    const float width = std::min(imageWidth + kBarBreadth, std::floor(screen.Width() + 0.5f));
    const float height =
        bar + std::min(imageHeight + kBarBreadth, std::floor(screen.Height() + 0.5f)) + 1;
    SetSizeLimits(std::min(width, kBarBreadth + kLeastImage), width,
                  std::min(height, bar + kBarBreadth + 1 + kLeastImage), height);
    SetZoomLimits(width, height);
    if (Bounds().Width() > width || Bounds().Height() > height) {
        ResizeTo(width, height);
    }
}

void ViewerWindow::ScreenChanged(BRect frame, color_space mode)
{
    BWindow::ScreenChanged(frame, mode);
    RedoSizes();
}

void ViewerWindow::ToggleStretch()
{
    const bool stretches = !fStretchItem->IsMarked();
    fStretchItem->SetMarked(stretches);
    fScaleMenu->SetEnabled(!stretches);
    fImage->SetImageScale(0, stretches ? kStretched : kFixedScale);
    RedoSizes();
}

void ViewerWindow::ScaleImage(const BMessage& message)
{
    float scale = 0;
    int32 mode = kSameMode;
    message.FindFloat("scale", &scale);
    message.FindInt32("scale_mode", &mode);
    fImage->SetImageScale(scale, mode);
    RedoSizes();
}

void ViewerWindow::ZoomImage(const BMessage& message)
{
    float factor = 1;
    BPoint where;
    message.FindFloat("factor", &factor);
    message.FindPoint("where", &where);
    fImage->ZoomBy(factor, where);
    MarkScale();
    RedoSizes();
}

/// Marks the scale that the image has, if the menu has it.
void ViewerWindow::MarkScale()
{
    for (int32 index = 0; index < fScaleMenu->CountItems(); index++) {
        BMenuItem* item = fScaleMenu->ItemAt(index);
        const float scale =
            item->Message() != nullptr ? item->Message()->GetFloat("scale", 0) : 0.0f;
        item->SetMarked(scale == fImage->Scale());
    }
}

// Messages

void ViewerWindow::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kFileNews:
        TakeNews();
        break;
    case kChooseEncoding:
        ReadAs(static_cast<TextEncoding>(message->GetInt32("encoding", 0)));
        break;
    case kFollowFile:
        ToggleFollowing();
        break;
    case B_NODE_MONITOR:
        FileChanged(*message);
        break;
    case kFilePartRead:
        TakeGrowth();
        break;
    case kWrapText:
        if (fText != nullptr) {
            ToggleWrap();
        }
        break;
    case kWrapToEdge:
        if (fText != nullptr) {
            ToggleWrapToEdge();
        }
        break;
    case kStretchToFit:
        if (fImage != nullptr) {
            ToggleStretch();
        }
        break;
    case kScaleImage:
        if (fImage != nullptr) {
            ScaleImage(*message);
        }
        break;
    case kZoomImage:
        if (fImage != nullptr) {
            ZoomImage(*message);
        }
        break;
    case kOpenPanel:
        ShowOpenPanel();
        break;
    case B_REFS_RECEIVED:
        RefsReceived(message);
        break;
    case kLocalEntries:
        Dropped(message);
        break;
    default:
        if (!ViewReceived(*message) && !FindingReceived(*message)) {
            BWindow::MessageReceived(message);
        }
    }
}

// What is chosen in it goes to the application, which opens viewers.
void ViewerWindow::ShowOpenPanel()
{
    if (fOpenPanel == nullptr) {
        fOpenPanel = std::make_unique<BFilePanel>();
        fOpenPanel->SetPanelDirectory("~");
    }
    fOpenPanel->Show();
}

void ViewerWindow::Dropped(BMessage* message)
{
    if (message->HasRef("refs")) {
        BMessage refs(*message);
        refs.what = B_REFS_RECEIVED;
        be_app_messenger.SendMessage(&refs);
    }
}

} // namespace norvane
