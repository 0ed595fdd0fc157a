#pragma once
#include "base/CString.h"

/// Paths and folders of the process. One object serves all; its operations may be called from several threads. Paths
/// end at their first NUL.
class BKUtility {
 public:
  /// The process-wide object, never null.
  static BKUtility* GetInstance();

  /// The folder under which the library puts its working folders: one of this process alone, made on first use with
  /// permissions for its owner only and removed with all its contents when the process ends. It lies in memory-backed
  /// storage where the system has such with at least 1 GiB free, otherwise under the system's temporary folder. What a
  /// killed process of the same user left there is removed when the next one makes its folder. A forked child gets a
  /// folder of its own and leaves its parent's alone, unless it was forked while another thread made a folder. Raises
  /// `CFileException` when no folder can be made. Not to be asked when static objects are being destroyed.
  CString GetDataPath();
  /// Chooses a folder instead. It is made when needed and never removed. An empty path goes back to the own one.
  void SetDataPath(const CString& sPath);

  /// Joins two path parts with one separator. Leading separators of `sMore` are dropped, and backslashes in it are
  /// separators too. The last two arguments name the caller and have no effect.
  CString BKPathCombine(CString sPath, CString sMore, CString sSourceFile = CString(), int nSourceLine = 0);
  /// Mode 2: the file's name without its extension, made fit for a folder name and cut to 200 bytes, "_" and sixteen
  /// hexadecimal digits of a stable hash of the absolute path. The same path always gives the same text, which is
  /// always one component and never "." or "..". Any other mode raises `CInvalidArgException`.
  CString GetSegmntFromFilePath(const CString& sPath, int nSegment);
  bool DoesFileOrDirExist(const CString& sPath, CString sSourceFile = CString(), int nSourceLine = 0);
  /// Creates the folder with its missing parents; quietly accepts one that exists. False on failure.
  bool MakeDirectory(const CString& sPath);
  /// Removes the folder and all that is in it, following no link; a file or link of that name goes too. False on
  /// failure; an absent folder is none.
  bool DeleteDirectory(const CString& sPath);
  /// Rewrites the text in place so that it can serve as a folder name: each of \ / : * ? " < > | and every byte below
  /// 0x20 becomes "_".
  void ConvertStringForVaildFolderName(CString& s);

 private:
  BKUtility() = default;
};
