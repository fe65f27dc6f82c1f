#include "ftp/client/RemoteEntry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

using norvane::ParseListing;
using norvane::RemoteEntry;

// The samples are files of pairs of lines: one of a listing, and behind a tab what it is read as,
// "name | size | date | what commands call it" or "nothing". "\x20" is a byte in hexadecimal, a
// line that begins with "# " is for who reads the file.

namespace {

constexpr char kNeverUsed[] = "(never used)";

struct Sample
{
    std::string line;
    std::optional<RemoteEntry> expected;
};

std::string Unescaped(const std::string& text)
{
    std::string bytes;
    for (size_t i = 0; i < text.size(); i++) {
        if (text[i] == '\\') {
            bytes += static_cast<char>(std::stoi(text.substr(i + 2, 2), nullptr, 16));
            i += 3;
        } else {
            bytes += text[i];
        }
    }
    return bytes;
}

std::vector<std::string> Split(const std::string& text)
{
    std::vector<std::string> parts;
    size_t begin = 0;
    for (size_t end = 0; end != std::string::npos; begin = end + 3) {
        end = text.find(" | ", begin);
        parts.push_back(Unescaped(text.substr(begin, end - begin)));
    }
    return parts;
}

std::optional<RemoteEntry> Expected(const std::string& text)
{
    if (text == "\tnothing") {
        return std::nullopt;
    }
    const std::vector<std::string> parts = Split(text.substr(1));
    if (parts.size() != 4) {
        ADD_FAILURE() << "not a sample: " << text;
        return std::nullopt;
    }
    RemoteEntry entry;
    entry.name = parts[0];
    entry.size = parts[1];
    entry.date = parts[2];
    entry.commandName = parts[3] == kNeverUsed ? "" : parts[3];
    return entry;
}

std::vector<Sample> ReadSamples(const std::filesystem::path& path)
{
    std::vector<Sample> samples;
    std::ifstream in(path);
    std::string line;
    std::string expected;
    while (std::getline(in, line)) {
        if (line.rfind("# ", 0) != 0 && std::getline(in, expected)) {
            samples.push_back({Unescaped(line), Expected(expected)});
        }
    }
    return samples;
}

std::vector<Sample> AllSamples()
{
    std::vector<Sample> samples;
    for (const auto& file : std::filesystem::directory_iterator(LISTING_SAMPLES)) {
        for (Sample& sample : ReadSamples(file.path())) {
            samples.push_back(std::move(sample));
        }
    }
    return samples;
}

void ExpectSame(const RemoteEntry& entry, const Sample& sample)
{
    EXPECT_EQ(entry.name, sample.expected->name) << sample.line;
    EXPECT_EQ(entry.size, sample.expected->size) << sample.line;
    EXPECT_EQ(entry.date, sample.expected->date) << sample.line;
    EXPECT_EQ(entry.commandName, sample.expected->commandName) << sample.line;
    EXPECT_EQ(entry.permissions, sample.line.substr(0, sample.line.find(' ')).substr(0, 24));
}

} // namespace

TEST(ListingSamplesTest, ThereAreEnough)
{
    EXPECT_GE(AllSamples().size(), 350u);
}

TEST(ListingSamplesTest, ReadsEachLine)
{
    for (const Sample& sample : AllSamples()) {
        const std::vector<RemoteEntry> entries = ParseListing(sample.line);
        ASSERT_EQ(entries.size(), sample.expected ? 1u : 0u) << sample.line;
        if (sample.expected) {
            ExpectSame(entries[0], sample);
        }
    }
}

TEST(ListingSamplesTest, ReadsThemAsOneListing)
{
    const std::vector<Sample> samples = AllSamples();
    std::string listing = "total 5";
    std::vector<const Sample*> expected;
    for (const Sample& sample : samples) {
        listing += "\n" + sample.line;
        if (sample.expected) {
            expected.push_back(&sample);
        }
    }

    const std::vector<RemoteEntry> entries = ParseListing(listing);

    ASSERT_EQ(entries.size(), expected.size());
    for (size_t i = 0; i < entries.size(); i++) {
        ExpectSame(entries[i], *expected[i]);
    }
}
