#pragma once

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

/// Archives as bytes, made field by field, so that they can say what no archiver would.
class TarText
{
public:
    /// An entry as it is; `type` is '0' for a file, '1' a second name, '2' a link, '5' a folder,
    /// '6' a pipe, '3' and '4' devices.
    TarText& Add(const std::string& path, char type, const std::string& contents = "",
                 const std::string& link = "", unsigned mode = 0644)
    {
        if (path.size() > 100) {
            AddHeader("././@LongLink", 'L', path.size() + 1, "", 0644);
            AddContents(path + std::string(1, '\0'));
        }
        if (link.size() > 100) {
            AddHeader("././@LongLink", 'K', link.size() + 1, "", 0644);
            AddContents(link + std::string(1, '\0'));
        }
        AddHeader(path.substr(0, 100), type, type == '0' ? contents.size() : 0, link.substr(0, 100),
                  mode);
        if (type == '0') {
            AddContents(contents);
        }
        return *this;
    }
    TarText& File(const std::string& path, const std::string& contents, unsigned mode = 0644)
    {
        return Add(path, '0', contents, "", mode);
    }
    TarText& Folder(const std::string& path, unsigned mode = 0755)
    {
        return Add(path, '5', "", "", mode);
    }
    TarText& Link(const std::string& path, const std::string& text)
    {
        return Add(path, '2', "", text);
    }
    TarText& SecondName(const std::string& path, const std::string& file)
    {
        return Add(path, '1', "", file);
    }
    /// A file that announces more than there is.
    TarText& Announce(const std::string& path, uint64_t size)
    {
        AddHeader(path, '0', size, "", 0644);
        return *this;
    }

    std::string Text() const { return fText + std::string(1024, '\0'); }
    std::string TextWithoutEnd() const { return fText; }

private:
    void AddHeader(const std::string& path, char type, uint64_t size, const std::string& link,
                   unsigned mode)
    {
        char header[512] = {};
        std::memcpy(header, path.data(), path.size());
        std::snprintf(header + 100, 8, "%07o", mode);
        std::snprintf(header + 108, 8, "%07o", 0);
        std::snprintf(header + 116, 8, "%07o", 0);
        std::snprintf(header + 124, 12, "%011llo", static_cast<unsigned long long>(size));
        std::snprintf(header + 136, 12, "%011o", 1'000'000'000);
        header[156] = type;
        std::memcpy(header + 157, link.data(), link.size());
        std::memcpy(header + 257, "ustar  ", 8);
        std::memset(header + 148, ' ', 8);
        unsigned sum = 0;
        for (const char byte : header) {
            sum += static_cast<unsigned char>(byte);
        }
        std::snprintf(header + 148, 8, "%06o", sum);
        fText.append(header, sizeof(header));
    }
    void AddContents(const std::string& contents)
    {
        fText += contents;
        fText.append((512 - contents.size() % 512) % 512, '\0');
    }

    std::string fText;
};
