#include <String.h>

bool operator==(const BString& a, const BString& b)
{
    return a.Length() == b.Length() && a.Compare(b) == 0;
}

bool operator==(const BString& a, const char* b)
{
    return a.Compare(b) == 0;
}

bool operator==(const char* a, const BString& b)
{
    return b.Compare(a) == 0;
}

bool operator!=(const BString& a, const BString& b)
{
    return !(a == b);
}

bool operator!=(const BString& a, const char* b)
{
    return a.Compare(b) != 0;
}

bool operator!=(const char* a, const BString& b)
{
    return b.Compare(a) != 0;
}

bool operator<(const BString& a, const BString& b)
{
    return a.Compare(b) < 0;
}

bool operator<(const BString& a, const char* b)
{
    return a.Compare(b) < 0;
}

bool operator<(const char* a, const BString& b)
{
    return b.Compare(a) > 0;
}

bool operator<=(const BString& a, const BString& b)
{
    return a.Compare(b) <= 0;
}

bool operator<=(const BString& a, const char* b)
{
    return a.Compare(b) <= 0;
}

bool operator<=(const char* a, const BString& b)
{
    return b.Compare(a) >= 0;
}

bool operator>(const BString& a, const BString& b)
{
    return a.Compare(b) > 0;
}

bool operator>(const BString& a, const char* b)
{
    return a.Compare(b) > 0;
}

bool operator>(const char* a, const BString& b)
{
    return b.Compare(a) < 0;
}

bool operator>=(const BString& a, const BString& b)
{
    return a.Compare(b) >= 0;
}

bool operator>=(const BString& a, const char* b)
{
    return a.Compare(b) >= 0;
}

bool operator>=(const char* a, const BString& b)
{
    return b.Compare(a) <= 0;
}
