#include "Report.h"

#include <algorithm>
#include <cstring>

namespace {

/// Writes or reads numbers and texts, in one order for both.
class Writer
{
public:
    void Do(const std::string& text)
    {
        Number(static_cast<long long>(text.size()));
        fBytes += text;
    }
    template<typename Integer>
    void Do(const Integer& number)
    {
        Number(static_cast<long long>(number));
    }
    size_t Size(size_t size)
    {
        Number(static_cast<long long>(size));
        return size;
    }
    const std::string& Bytes() const { return fBytes; }

private:
    void Number(long long number)
    {
        fBytes.append(reinterpret_cast<const char*>(&number), sizeof(number));
    }

    std::string fBytes;
};

class Reader
{
public:
    explicit Reader(const std::string& bytes) : fBytes(bytes) {}

    void Do(std::string& text)
    {
        text = fBytes.substr(std::min(fAt, fBytes.size()), Size(0));
        fAt += text.size();
    }
    template<typename Integer>
    void Do(Integer& number)
    {
        number = static_cast<Integer>(Number());
    }
    size_t Size(size_t) { return static_cast<size_t>(Number()); }

private:
    long long Number()
    {
        long long number = 0;
        if (fAt + sizeof(number) <= fBytes.size()) {
            std::memcpy(&number, fBytes.data() + fAt, sizeof(number));
        }
        fAt += sizeof(number);
        return number;
    }

    const std::string& fBytes;
    size_t fAt = 0;
};

template<typename Stream, typename Item>
void DoItem(Stream* stream, Item& item)
{
    stream->Do(item.kind);
    stream->Do(item.mode);
    stream->Do(item.text);
    stream->Do(item.note);
    stream->Do(item.modifiedNs);
    stream->Do(item.node);
}

void Do(Writer* stream, const Snapshot& all)
{
    stream->Size(all.size());
    for (const auto& [path, item] : all) {
        stream->Do(path);
        DoItem(stream, item);
    }
}

void Do(Reader* stream, Snapshot& all)
{
    const size_t count = stream->Size(0);
    for (size_t i = 0; i < count; ++i) {
        std::string path;
        stream->Do(path);
        DoItem(stream, all[path]);
    }
}

template<typename Stream, typename ReportType>
void DoAct(Stream* stream, ReportType& report)
{
    stream->Do(report.hasActed);
    stream->Do(report.actedBefore);
    Do(stream, report.atAct);
    Do(stream, report.afterAct);
}

template<typename Stream, typename ReportType>
void DoEnd(Stream* stream, ReportType& report)
{
    stream->Do(report.isFinished);
    stream->Do(report.result.isWhole);
    stream->Do(report.result.wasTold);
}

} // namespace

std::string Report::FlattenedAct() const
{
    Writer writer;
    DoAct(&writer, *this);
    return writer.Bytes();
}

std::string Report::FlattenedEnd() const
{
    Writer writer;
    DoEnd(&writer, *this);
    writer.Size(calls.size());
    for (const Call& call : calls) {
        writer.Do(call.kind);
        writer.Do(call.path);
    }
    writer.Size(shown.size());
    for (const ShownFile& file : shown) {
        writer.Do(file.path);
        writer.Do(file.details);
    }
    return writer.Bytes();
}

void Report::Unflatten(const std::string& bytes)
{
    Reader reader(bytes);
    DoAct(&reader, *this);
    DoEnd(&reader, *this);
    calls.resize(reader.Size(0));
    for (Call& call : calls) {
        reader.Do(call.kind);
        reader.Do(call.path);
    }
    shown.resize(reader.Size(0));
    for (ShownFile& file : shown) {
        reader.Do(file.path);
        reader.Do(file.details);
    }
}
