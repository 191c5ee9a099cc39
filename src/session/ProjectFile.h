#pragma once
// The project file (.inp): written in version 1.4, read in 1.4 and 1.3.
#include <string>

namespace velk {

constexpr const char* kProjectFilter =
    "All Files (*.*)|*.*|VELK Graphic Interface Files(*.inp)|*.inp";

// The commands: a file dialog through the host, then the file step, with the
// trap of the file commands around both.
void Save_Project();
void Open_Project();

// The same commands without a dialog, for a build without windows. They show
// the same messages. Open returns true when a model was read.
bool Save_Project_Path(const std::string& path);
bool Open_Project_Path(const std::string& path);

// The file steps alone; failures propagate as faults.
void Save_Project_File(const std::string& path);
// Returns false when the version is neither 1.3 nor 1.4 (the message has been shown).
bool Open_Project_File(const std::string& path, float* version = nullptr);

// The same two steps on text in memory: what Save_Project_File writes, and the
// reading of Open_Project_File once the file's bytes are in; `fileTitle` goes
// into the caption.
std::string Project_Data();
bool Open_Project_Data(std::string data, const std::string& fileTitle, float* version = nullptr);

// Shows the "Disk Error" dialog for the file failures it knows.
void File_Errors(int number);

// The trap shared by all file commands: cancel ends quietly; any other failure
// shows File_Errors and then the command's last word. Returns false on failure.
template <class Fn> bool Run_File_Command(const char* lastWord, Fn&& fn);

} // namespace velk

#include "common/Fault.h"
#include "common/Host.h"

namespace velk {

template <class Fn> bool Run_File_Command(const char* lastWord, Fn&& fn) {
  try {
    fn();
    return true;
  } catch (const Fault& f) {
    if (f.number() == errCancel) return false;
    if (const std::string what = f.what(); what.rfind("run-time fault ", 0) != 0)
      host().Detail(what);
    File_Errors(f.number());
  } catch (const std::bad_alloc&) {
    host().Detail("not enough memory");
    File_Errors(errOutOfMemory);
  } catch (const std::exception&) {
  }
  MsgBox(lastWord);
  return false;
}

} // namespace velk
