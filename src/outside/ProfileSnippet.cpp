#include "outside/ProfileSnippet.h"

#include <File.h>
#include <NodeRef.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace norvane {

namespace {

constexpr size_t kPieceBytes = size_t{64} * 1024;

struct Found
{
    bool isRead = false; // to its end
    bool hasSnippet = false;
    bool endsInLine = true; // nothing follows the last line's end
};

/// Looks for the snippet among any bytes, a piece at a time.
Found LookThrough(BFile& file)
{
    Found found;
    const std::string_view snippet(kProfileSnippet);
    std::string text;
    std::vector<char> piece(kPieceBytes);
    ssize_t count = 0;
    while ((count = file.Read(piece.data(), piece.size())) > 0) {
        text.append(piece.data(), static_cast<size_t>(count));
        if (text.find(snippet) != std::string::npos) {
            found.hasSnippet = true;
            break;
        }
        found.endsInLine = text.back() == '\n';
        // It may begin in this piece and end in the next.
        text.erase(0, text.size() - std::min(text.size(), snippet.size() - 1));
    }
    found.isRead = count >= 0;
    return found;
}

/// Writes all of it or nothing: half of it would keep every login shell from reading on.
void AppendWhole(BFile& file, const std::string& path, const std::string& text)
{
    off_t size = 0;
    node_ref node;
    if (file.GetSize(&size) != B_OK || file.GetNodeRef(&node) != B_OK ||
        (file.WriteAt(size, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
         file.Sync() == B_OK)) {
        return;
    }
    // An open file that could not be written does nothing more.
    BFile again(path.c_str(), B_READ_WRITE);
    node_ref found;
    if (again.GetNodeRef(&found) == B_OK && found == node) {
        again.SetSize(size);
    }
}

} // namespace

const char* const kProfileSnippet = "if [ \"$FOLDER_PATH\" != \"\" ]; then \n"
                                    "    cd \"$FOLDER_PATH\" \n"
                                    "    unset -v FOLDER_PATH \n"
                                    " else \n"
                                    "    cd \"$HOME\" \n"
                                    " fi \n";

void AddProfileSnippet(const std::string& path)
{
    BFile file(path.c_str(), B_READ_WRITE | B_CREATE_FILE);
    if (file.InitCheck() != B_OK || file.Lock() != B_OK) {
        return;
    }
    const Found found = LookThrough(file);
    if (!found.isRead || found.hasSnippet) {
        return;
    }
    AppendWhole(file, path, (found.endsInLine ? "" : "\n") + std::string(kProfileSnippet));
}

} // namespace norvane
