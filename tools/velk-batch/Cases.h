#pragma once
// The steps the commands share: a girder made from the dialog's fields and the
// rules, as `generate` makes it, and a run pressed as `run` presses it.
#include "forms/frmBeamShape.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace velk::batch {

class BatchHost;

std::map<std::string, std::string*> FieldsOf(frmBeamShape& f);
// A field of the girder dialog, the check box included.
bool IsField(const std::string& name);

// A rule of `generate`, applied to the new mesh in the order given.
struct Rule {
  std::string option, value;
};

// A girder as asked for: the fields set in the order given, then the rules.
struct GirderRequest {
  std::vector<std::pair<std::string, std::string>> fields;
  std::vector<Rule> rules;
};

// What an argument was to a command's parser; a refusal leaves the reason in
// `why` for the usage error.
enum class Taken { No, Yes, Refused };

// Takes args[i] when it is a rule, moving i past its value.
Taken TakeRule(const std::vector<std::string>& args, std::size_t& i, GirderRequest& g,
               std::string& why);

// The usage error of the fields, empty when all are fine.
std::string CheckFields(const GirderRequest& g);

// Builds the girder as the dialog does in a new session, then the rules.
// False, after the dialog's or the rule's message, when either refused.
bool Generate_Girder(const GirderRequest& g);

// What `run` was asked for.
struct RunRequest {
  std::string in, out, listing, deck, vtu, estimate, shift, cycle, factor, modes;
  bool sym = false, torsion = false, shear = false;
  bool noCheck = false; // --no-check: the eigenvalue goes unchecked
};

// Takes args[i] when it is an iteration option of the run (--estimate,
// --max-shift, --max-cycle, --factor, --sym, --torsion, --shear, --no-check).
Taken TakeIterationOption(const std::vector<std::string>& args, std::size_t& i, RunRequest& r,
                          std::string& why);

// The options: the defaults, then the flags, through the options dialog's
// own checks, and whether the result is checked. False when the dialog
// refused them.
bool ApplyRunOptions(const RunRequest& r);

// A folder of our own for the deck and the listing, removed on the way out.
class TemporaryFolderGuard {
public:
  TemporaryFolderGuard();
  ~TemporaryFolderGuard();
  TemporaryFolderGuard(const TemporaryFolderGuard&) = delete;
  TemporaryFolderGuard& operator=(const TemporaryFolderGuard&) = delete;

private:
  std::string path_;
};

inline constexpr const char* kFreeStructure =
    "the structure is not restrained against rigid-body motion; check the restraints";

enum class RunEnd { Completed, Free, Failed };

// Presses Run in the run dialog's logic on the session's model, with the
// estimate when one is given, the host holding the run's messages. A free
// structure factors on round-off: whatever eigenvalue (or division by zero)
// came of it means nothing, so its messages are discarded and Free tells
// the cause instead.
RunEnd Run_Model(BatchHost& host, const std::string& estimate, int modes);

} // namespace velk::batch
