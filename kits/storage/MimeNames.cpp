// MimeTypeOfName(): what is remembered of the database, which takes a fifth of a millisecond for a
// name whose ending it does not know.

#include "MimeDatabase.h"

#include "kernel/Mutex.h"

#include <OS.h>

#include <QMimeDatabase>
#include <QMimeType>
#include <QStandardPaths>
#include <QString>

#include <algorithm>
#include <fnmatch.h>
#include <fstream>
#include <string>
#include <unordered_map>
#include <vector>

namespace kits {

namespace {

// The database may get other rules while the program runs; it looks after as long itself.
constexpr bigtime_t kRememberedFor = 5'000'000;
constexpr size_t kMostEndings = 1024;

std::string AskDatabase(const char* name)
{
    const QMimeType found =
        QMimeDatabase().mimeTypeForFile(QString::fromUtf8(name), QMimeDatabase::MatchExtension);
    return found.name().toStdString();
}

/// "*.tar.gz", and no other kind of rule.
bool IsForEnding(const std::string& pattern)
{
    return pattern.compare(0, 2, "*.") == 0 && pattern.find_first_of("*?[\\", 2) == pattern.npos;
}

/// What decides where no rule but those for endings speaks of the name: all that follows its first
/// point. A point at the very beginning is none.
std::string EndingOf(const std::string& name)
{
    const size_t point = name.find('.');
    if (point == 0) {
        return "/" + name; // no ending
    }
    return point == name.npos ? "" : name.substr(point);
}

/// The types of endings.
class Endings
{
public:
    std::string TypeOf(const char* name);

private:
    void Renew() REQUIRES(fMutex);
    bool HasRuleOfItsOwn(const char* name) const REQUIRES(fMutex);

    Mutex fMutex;
    bigtime_t fRenewed GUARDED_BY(fMutex) = 0;
    bool fIsKnown GUARDED_BY(fMutex) = false;              // which rules there are
    std::vector<std::string> fPatterns GUARDED_BY(fMutex); // all but those for endings
    std::unordered_map<std::string, std::string> fTypes GUARDED_BY(fMutex);
};

/// Reads the rules as the database's own tools write them, "weight:type:pattern[:flags]".
void Endings::Renew()
{
    fTypes.clear();
    fPatterns.clear();
    const QStringList files =
        QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, "mime/globs2");
    fIsKnown = !files.isEmpty();
    for (const QString& path : files) {
        std::ifstream file(path.toStdString());
        std::string line;
        while (std::getline(file, line)) {
            const size_t type = line.find(':');
            const size_t begin = type == line.npos ? type : line.find(':', type + 1);
            if (line.empty() || line[0] == '#' || begin == line.npos) {
                continue;
            }
            const std::string pattern =
                line.substr(begin + 1, line.find(':', begin + 1) - begin - 1);
            if (!IsForEnding(pattern)) {
                fPatterns.push_back(pattern);
            }
        }
        fIsKnown = fIsKnown && file.eof();
    }
}

bool Endings::HasRuleOfItsOwn(const char* name) const
{
    return std::any_of(fPatterns.begin(), fPatterns.end(), [name](const std::string& pattern) {
        return ::fnmatch(pattern.c_str(), name, FNM_CASEFOLD) == 0;
    });
}

std::string Endings::TypeOf(const char* name)
{
    const std::string ending = EndingOf(name);
    bool isByEnding = false;
    {
        MutexLock lock(fMutex);
        const bigtime_t now = system_time();
        if (fRenewed == 0 || now - fRenewed > kRememberedFor) {
            Renew();
            fRenewed = now;
        }
        isByEnding = fIsKnown && !HasRuleOfItsOwn(name);
        const auto found = isByEnding ? fTypes.find(ending) : fTypes.end();
        if (found != fTypes.end()) {
            return found->second;
        }
    }
    std::string type = AskDatabase(name);
    if (isByEnding) {
        MutexLock lock(fMutex);
        if (fTypes.size() >= kMostEndings) {
            fTypes.clear();
        }
        fTypes.emplace(ending, type);
    }
    return type;
}

} // namespace

std::string MimeTypeOfName(const char* name)
{
    // Never destroyed: other threads may look at rows until the program's end.
    static Endings* endings = new Endings;
    return endings->TypeOf(name);
}

} // namespace kits
