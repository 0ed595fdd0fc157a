#pragma once
// The persisted records say their form once: a list of their fields in archive order, each with the points in which it
// departs from the rule. Store, load, copy and comparison all walk that list.
//
//   static constexpr auto Fields() {
//     using T = CVRXoutRufComp;
//     using namespace laminate;
//     return FieldList<Field<&T::m_sName>, Field<&T::m_pPropertyArray>, Field<&T::m_pAssignArray, kSinceVersion2>>();
//   }
//
// Archive form of a record: a version word, that of its class, then the fields. A version word that the class does not
// know ends the load of the record with nothing more read. Copying replaces the contents of arrays by clones.
//
// `Serialize` of all records raises `CArchiveException` (end of file, or the wrong mode), `COleException` for a damaged
// length of a wide text, `CFileException` and `CMemoryException`, and leaves what was loaded before. Comparison gives 1
// or 0. Where a pointer that is walked is null, each of these operations raises `CInvalidArgException`.
#include <type_traits>

#include "base/CArchive.h"
#include "base/CException.h"
#include "base/CString.h"
#include "base/CStringArray.h"

namespace laminate {

/// In what a field departs from the rule that every field is stored, loaded, copied and compared.
enum FieldMark : unsigned {
  kSinceVersion2 = 1,  ///< in the image only from version 2; a load of version 1 leaves the present value
  kNotInImage = 2,     ///< neither stored nor loaded
  kNotCopied = 4,
  kNotCompared = 8,
  kShared = 16  ///< a copy takes the pointer and not what it points to; comparison is of the pointers
};

/// One field of a record.
template <auto kMember, unsigned kMarks = 0>
struct Field {
  static constexpr auto member = kMember;
  static constexpr unsigned marks = kMarks;
  static constexpr bool Is(FieldMark mark) { return (kMarks & mark) != 0; }
};

/// The fields of a record in archive order.
template <class... Fs>
struct FieldList {
  template <class Visitor>
  static constexpr void ForEach(Visitor&& visit) {
    (visit(Fs()), ...);
  }
  /// Stops at the first field for which the test fails.
  template <class Test>
  static constexpr bool All(Test&& test) {
    return (test(Fs()) && ...);
  }
};

namespace record_detail {

// A field that holds an object of its own or points to one, as that object.
template <class F>
auto& Target(F& field) {
  if constexpr (std::is_pointer_v<std::remove_const_t<F>>) {
    return Required(field);
  } else {
    return field;
  }
}

template <class F>
inline constexpr bool kIsPlain = std::is_arithmetic_v<F> || std::is_same_v<F, CString>;

}  // namespace record_detail

/// Stores or loads a record, as the archive's mode says.
template <class T>
void SerializeRecord(CArchive& ar, T& record) {
  if (ar.IsStoring()) {
    ar << static_cast<int>(T::m_nVersion);
    T::Fields().ForEach([&](auto field) {
      if constexpr (!field.Is(kNotInImage)) {
        auto& value = record.*field.member;
        if constexpr (record_detail::kIsPlain<std::remove_reference_t<decltype(value)>>) {
          ar << value;
        } else {
          record_detail::Target(value).Serialize(ar);
        }
      }
    });
    return;
  }
  int nVersion = 0;
  ar >> nVersion;
  if (nVersion < 1 || nVersion > T::m_nVersion) return;
  T::Fields().ForEach([&](auto field) {
    if constexpr (!field.Is(kNotInImage)) {
      if (field.Is(kSinceVersion2) && nVersion < 2) return;
      auto& value = record.*field.member;
      if constexpr (record_detail::kIsPlain<std::remove_reference_t<decltype(value)>>) {
        ar >> value;
      } else {
        record_detail::Target(value).Serialize(ar);
      }
    }
  });
}

/// Copies the fields of `source` to those of another object.
template <class T>
void CopyRecord(T& target, const T& source) {
  if (&target == &source) return;
  T::Fields().ForEach([&](auto field) {
    if constexpr (!field.Is(kNotCopied)) {
      if constexpr (field.Is(kShared)) {
        target.*field.member = source.*field.member;
      } else {
        record_detail::Target(target.*field.member) = record_detail::Target(source.*field.member);
      }
    }
  });
}

/// 1 on identity; otherwise 1 when all fields are equal, else 0.
template <class T>
int EqualRecords(const T& a, const T& b) {
  if (&a == &b) return 1;
  return T::Fields().All([&](auto field) {
    if constexpr (field.Is(kNotCompared)) {
      return true;
    } else if constexpr (field.Is(kShared)) {
      return a.*field.member == b.*field.member;
    } else {
      return bool(record_detail::Target(a.*field.member) == record_detail::Target(b.*field.member));
    }
  });
}

}  // namespace laminate
