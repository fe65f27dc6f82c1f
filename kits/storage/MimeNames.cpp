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
#include <utility>
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

/// All rules but those for endings.
struct Rules
{
    bool areKnown = false;
    std::vector<std::string> patterns;

    bool SpeakOf(const char* name) const
    {
        return std::any_of(patterns.begin(), patterns.end(), [name](const std::string& pattern) {
            return ::fnmatch(pattern.c_str(), name, FNM_CASEFOLD) == 0;
        });
    }
};

/// Reads the rules as the database's own tools write them, "weight:type:pattern[:flags]".
Rules ReadRules()
{
    Rules rules;
    const QStringList files =
        QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, "mime/globs2");
    rules.areKnown = !files.isEmpty();
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
                rules.patterns.push_back(pattern);
            }
        }
        rules.areKnown = rules.areKnown && file.eof();
    }
    return rules;
}

/// The types of endings.
class Endings
{
public:
    std::string TypeOf(const char* name);

private:
    void RenewIfOld();

    Mutex fMutex;
    bigtime_t fRenewed GUARDED_BY(fMutex) = 0;
    Rules fRules GUARDED_BY(fMutex);
    std::unordered_map<std::string, std::string> fTypes GUARDED_BY(fMutex);
};

/// Others go on with the old rules while one thread reads them.
void Endings::RenewIfOld()
{
    {
        MutexLock lock(fMutex);
        const bigtime_t now = system_time();
        if (fRenewed != 0 && now - fRenewed <= kRememberedFor) {
            return;
        }
        fRenewed = now;
    }
    Rules rules = ReadRules();
    MutexLock lock(fMutex);
    fRules = std::move(rules);
    fTypes.clear();
}

std::string Endings::TypeOf(const char* name)
{
    RenewIfOld();
    const std::string ending = EndingOf(name);
    bool isByEnding = false;
    {
        MutexLock lock(fMutex);
        isByEnding = fRules.areKnown && !fRules.SpeakOf(name);
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
