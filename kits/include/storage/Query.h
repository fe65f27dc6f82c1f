#pragma once

#include <Entry.h>
#include <EntryList.h>
#include <EntryRef.h>

#include <memory>

class BString;
class BVolume;

/// How attributes, values and terms are joined.
enum query_op {
    B_INVALID_OP = 0,
    B_EQ,
    B_GT,
    B_GE,
    B_LT,
    B_LE,
    B_NE,
    B_CONTAINS,
    B_BEGINS_WITH,
    B_ENDS_WITH,
    B_AND = 0x101,
    B_OR,
    B_NOT,
};

/// Finds the entries of a volume for which a predicate holds.
///
/// The predicate is built by pushing attributes, values and operators in postfix order, or given as
/// text:
///
///     ((name=="*.txt")&&(size>=1024))||(!(last_modified<1000000000))
///
/// Terms side by side must all hold. Attributes are "name", "size" (bytes; folders have none) and
/// "last_modified" (seconds since 1970); a term of any other holds for nothing. In the texts that
/// names are compared with for equality, "*" stands for any text, "?" for one character, "[a-z]"
/// for one of these and "\" takes such a meaning away.
///
/// After Fetch() threads walk through the volume, and the Get functions give what they find while
/// they go on, in no order. Links are not followed, nothing mounted in the volume is entered, what
/// may not be read is passed over. The root folder itself is no hit. Thread: one at a time, but for
/// Stop() and CountVisited().
class BQuery : public BEntryList
{
public:
    /// Asks nothing yet.
    BQuery();
    /// Ends what Fetch() began, without waiting for it.
    ~BQuery() override;
    BQuery(const BQuery&) = delete;
    BQuery& operator=(const BQuery&) = delete;

    /// Forgets predicate and volume and ends what Fetch() began; a new query can be made.
    status_t Clear();

    // The predicate, in postfix order. Errors: B_NOT_ALLOWED after Fetch(); whether what was pushed
    // makes a predicate is seen when it is asked for.

    /// The attribute that the next value is compared with. Errors: also B_BAD_VALUE for null.
    status_t PushAttr(const char* name);
    /// Joins an attribute and a value, or two terms; B_NOT takes one. Errors: also B_BAD_VALUE for
    /// what is none of them.
    status_t PushOp(query_op operation);
    /// A number, as the next ones.
    status_t PushUInt32(uint32 value);
    /// A number.
    status_t PushInt32(int32 value);
    /// A number.
    status_t PushUInt64(uint64 value);
    /// A number.
    status_t PushInt64(int64 value);
    /// A number with a fraction, which is compared as it is.
    status_t PushFloat(float value);
    /// A number with a fraction, which is compared as it is.
    status_t PushDouble(double value);
    /// A text with its wildcards; a "\" that stands before none of them is itself. With
    /// `caseInsensitive` capital and small letters are the same.
    status_t PushString(const char* value, bool caseInsensitive = false);

    /// The volume to search. Errors: B_NOT_ALLOWED after Fetch(), B_BAD_VALUE for null or one that
    /// is not mounted.
    status_t SetVolume(const BVolume* volume);
    /// Takes a predicate's text in place of what was pushed. Errors: B_NOT_ALLOWED after Fetch(),
    /// B_BAD_VALUE for null and for what is no predicate; nothing is changed then.
    status_t SetPredicate(const char* predicate);

    /// Copies the predicate's text with its final zero. Errors: B_NO_INIT when there is none,
    /// B_BAD_VALUE when what was pushed makes none, or for null or too small a `buffer`: it is not
    /// touched then.
    status_t GetPredicate(char* buffer, size_t length);
    /// The same, of any length.
    status_t GetPredicate(BString* predicate);
    /// How many bytes the predicate's text takes with its final zero; 0 when there is none.
    size_t PredicateLength();
    /// The volume's number. Errors: B_NO_INIT.
    dev_t TargetDevice() const;

    /// Begins to search. Errors: B_NO_INIT without a volume or a predicate, B_NOT_ALLOWED when it
    /// was begun already, B_BAD_VALUE when what was pushed makes no predicate, those of opening the
    /// volume's root folder, B_NO_MORE_THREADS.
    status_t Fetch();
    /// Has the search end: whoever waits in a Get function is told that nothing follows. An
    /// extension of the platform. Thread: any, while the query is neither fetched nor cleared.
    void Stop();
    /// How many entries were looked at so far, about; 0 before Fetch(). Says whether the volume still
    /// answers while nothing is found. An extension of the platform. Thread: as Stop().
    int64 CountVisited() const;

    // BEntryList. Each waits for the next hit.

    /// Errors: B_ENTRY_NOT_FOUND at the end, B_FILE_ERROR before Fetch().
    status_t GetNextEntry(BEntry* entry, bool traverse = false) override;
    /// The same.
    status_t GetNextRef(entry_ref* ref) override;
    /// Always B_UNSUPPORTED: the system's record cannot say in which folder an entry is.
    int32 GetNextDirents(dirent* buffer, size_t length, int32 count = INT32_MAX) override;
    /// Always B_ERROR: a search is made again by Clear() and Fetch().
    status_t Rewind() override;
    /// Always B_ERROR: nobody knows before the end.
    int32 CountEntries() override;

private:
    class Impl;

    std::unique_ptr<Impl> fImpl;
};
