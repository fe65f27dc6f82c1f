#pragma once

#include <View.h>

#include <string>

class BStatusBar;

namespace norvane {

/// The strip below a pane's list: one line of counts and, during long listings, a progress bar.
class NorvFtr : public BView
{
public:
    explicit NorvFtr(BRect frame);
    ~NorvFtr() override;

    // BView
    void Describe(BViewDescription* description) const override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;

    /// The caller has it redrawn.
    void SetText(const char* text) { fText = text; }
    const std::string& Text() const { return fText; }
    /// What stands at the right end where there is room for both; the caller has it redrawn.
    void SetMarks(const std::string& text) { fMarks = text; }
    const std::string& Marks() const { return fMarks; }
    /// What is shown more quietly besides, where there is room for it, too; the caller has it
    /// redrawn.
    void SetSpace(const std::string& text) { fSpace = text; }
    const std::string& Space() const { return fSpace; }
    void ResizeTo(float width, float height);

    /// Attaches the bar, empty.
    void Start(float max);
    /// Takes the bar away; it is kept for the next run.
    void Stop();
    void Update(float steps = 1);
    void SetMax(int max);
    BStatusBar* Bar() const { return fBar; }

private:
    float DrawAtRight(const std::string& text, float right);

    std::string fText = " ";
    std::string fMarks;
    std::string fSpace;
    int fBaseline;
    BStatusBar* fBar; // ours while it is not attached
};

} // namespace norvane
