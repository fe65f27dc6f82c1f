#pragma once

#include <SupportDefs.h>

#include <memory>
#include <vector>

/// Compares texts as the person's language orders them.
///
/// Upper and lower case are one until nothing else differs, as are accents and what has none in
/// languages that hold so. Texts are UTF-8; bytes that are none compare like a replacement
/// character. Where the language is not set, as in the system's plain locale, English stands in.
/// Thread: one at a time; a copy is another object.
class BCollator
{
public:
    /// By the person's language, digits one by one.
    BCollator();
    ~BCollator();
    BCollator(const BCollator& other);
    BCollator& operator=(const BCollator& other);

    /// Whether "9" comes before "10": digits that stand together count as one number.
    status_t SetNumericSorting(bool isEnabled);

    /// Below zero when `first` comes before `second`, above when behind; 0 when nothing tells them
    /// apart, which does not mean that they are the same bytes. Null counts as "".
    int Compare(const char* first, const char* second) const;
    bool Equal(const char* first, const char* second) const;
    bool Greater(const char* first, const char* second) const;
    bool GreaterOrEqual(const char* first, const char* second) const;

    /// An extension of the platform: the place of each text among them, from 0; texts that nothing
    /// tells apart have the same. Faster by far than comparing each with many others.
    std::vector<uint32> Ranks(const std::vector<const char*>& texts) const;

private:
    class Impl;

    std::unique_ptr<Impl> fImpl; // never null
};
