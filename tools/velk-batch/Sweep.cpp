#include "Sweep.h"

#include "BatchHost.h"
#include "Cases.h"
#include "Stop.h"
#include "SweepPlot.h"
#include "Usage.h"
#include "analysis/EigenCalculation.h"
#include "common/Host.h"
#include "common/Fault.h"
#include "common/TextFile.h"
#include "common/TextRules.h"
#include "forms/ResultCheckText.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <thread>

namespace velk::batch {

namespace {

constexpr std::size_t kMostCases = 10000;
constexpr int kMostJobs = 1024;

struct SweepRequest {
  std::string field, range;
  double from = 0, to = 0, step = 0;
  GirderRequest fixed;
  RunRequest run;
  std::string out, plot;
  int jobs = 0; // 0: one a core
  int shard = 1, shards = 1;
};

// What a case's process tells its parent.
struct CaseResult {
  std::string eigenvalue; // as the run prints it; empty when the case failed
  int equations = 0, bandwidth = 0;
  double seconds = 0;
  std::string failure;
  std::string check; // the verdict of the check of a case that found its eigenvalue
};

// False for a case whose eigenvalue the check found wanting; a failed case or
// one run unchecked has nothing to doubt.
bool Checked(const CaseResult& r) {
  return r.check.empty() || r.check == "ok" || r.check == "not checked";
}

// A whole number of at most six digits from `low` up, or nothing.
std::optional<int> WholeNumber(const std::string& text, int low, int high) {
  if (text.empty() || text.size() > 6 ||
      !std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }))
    return std::nullopt;
  const int n = std::stoi(text);
  if (n < low || n > high) return std::nullopt;
  return n;
}

// The text a value goes into its field as: shortest round trip of the value
// held to 15 digits, so that 0 + 3 x 0.1 is "0.3" and not its round-off.
std::string ValueText(double v) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.15g", v);
  const double held = std::strtod(buffer, nullptr);
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, held).ptr;
  return std::string(buffer, end);
}

// FROM + i STEP for i = 0..n, n counted from the range (a last value within a
// relative 1e-9 of TO is TO itself), never by adding: a step lost in the
// round-off of FROM would otherwise give the same value for ever. The range
// is checked by the caller beforehand.
std::vector<std::string> Values(double from, double to, double step) {
  const double tolerance = 1e-9 * std::max(std::abs(to), step);
  const auto n = static_cast<std::size_t>(std::floor((to - from + tolerance) / step));
  std::vector<std::string> values;
  for (std::size_t i = 0; i <= n; ++i) {
    const double v = from + static_cast<double>(i) * step;
    values.push_back(ValueText(std::abs(v - to) <= tolerance ? to : v));
  }
  return values;
}

// The usage error of FIELD=FROM:TO:STEP, empty when it makes a range.
std::string ParseRange(SweepRequest& s) {
  const std::string whole = s.field + "=" + s.range;
  std::vector<std::string> parts;
  std::stringstream in(s.range);
  for (std::string part; std::getline(in, part, ':');)
    parts.push_back(part);
  if (parts.size() != 3 || !std::all_of(parts.begin(), parts.end(), IsNumeric))
    return whole + ": FROM:TO:STEP takes three numbers";
  s.from = TextToDouble(parts[0]);
  s.to = TextToDouble(parts[1]);
  s.step = TextToDouble(parts[2]);
  if (!std::isfinite(s.from) || !std::isfinite(s.to) || !std::isfinite(s.step))
    return whole + ": FROM:TO:STEP takes finite numbers";
  if (s.step <= 0) return whole + ": the step must be greater than 0";
  if (s.from > s.to) return whole + ": FROM must not be greater than TO";
  if ((s.to - s.from) / s.step >= static_cast<double>(kMostCases))
    return whole + ": more than " + std::to_string(kMostCases) + " cases";
  // A field holds a Single: a step below its spacing there gives cases of the
  // same girder, or one past TO.
  const float largest = static_cast<float>(std::max(std::abs(s.from), std::abs(s.to)));
  const double spacing = std::nextafter(largest, HUGE_VALF) - largest;
  if (s.step < spacing)
    return whole + ": the step is below the spacing of Single numbers there (" +
           ValueText(spacing) + "), so the values would repeat";
  return {};
}

// 0 when the arguments make a request, else the usage error's exit status.
int ParseSweep(const std::vector<std::string>& args, SweepRequest& s) {
  std::string why, jobs, shard;
  const std::map<std::string, std::string*> valued = {
      {"-o", &s.out}, {"--plot", &s.plot}, {"--jobs", &jobs}, {"--shard", &shard}};
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    Taken t = TakeRule(args, i, s.fixed, why);
    if (t == Taken::No) t = TakeIterationOption(args, i, s.run, why);
    if (t == Taken::Refused) return Usage(why);
    if (t == Taken::Yes) continue;
    if (auto v = valued.find(a); v != valued.end()) {
      if (i + 1 >= args.size()) return Usage(a + " needs a value");
      *v->second = args[++i];
    } else if (auto eq = a.find('='); eq != std::string::npos && eq > 0) {
      const std::string name = a.substr(0, eq), text = a.substr(eq + 1);
      if (text.find(':') == std::string::npos) {
        s.fixed.fields.emplace_back(name, text);
      } else if (s.field.empty()) {
        s.field = name;
        s.range = text;
      } else {
        return Usage("sweep takes one swept field, not both " + s.field + " and " + name);
      }
    } else {
      return Usage("unexpected argument '" + a + "'");
    }
  }
  if (s.field.empty()) return Usage("sweep needs one FIELD=FROM:TO:STEP");
  if (s.out.empty()) return Usage("sweep needs -o STUDY.csv");
  if (!IsField(s.field)) return Usage("unknown field '" + s.field + "'");
  for (const auto& [name, text] : s.fixed.fields)
    if (name == s.field) return Usage(name + " is swept and cannot be set as well");
  if (const std::string bad = ParseRange(s); !bad.empty()) return Usage(bad);
  if (!s.run.estimate.empty() && !IsNumeric(s.run.estimate))
    return Usage("--estimate takes a number");
  if (!jobs.empty()) {
    const auto n = WholeNumber(jobs, 1, kMostJobs);
    if (!n) return Usage("--jobs takes a whole number from 1 to " + std::to_string(kMostJobs));
    s.jobs = *n;
  }
  if (!shard.empty()) {
    const auto slash = shard.find('/');
    const auto k = slash == std::string::npos
                       ? std::nullopt
                       : WholeNumber(shard.substr(0, slash), 1, static_cast<int>(kMostCases));
    const auto n =
        k ? WholeNumber(shard.substr(slash + 1), *k, static_cast<int>(kMostCases)) : std::nullopt;
    if (!n) return Usage("--shard takes K/N with 1 <= K <= N, not '" + shard + "'");
    s.shard = *k;
    s.shards = *n;
  }
  if (!s.plot.empty()) {
#ifndef VELK_BATCH_PLOT
    return Usage("--plot needs a build with the desktop program (VELK_BUILD_GUI ON): this "
                 "one has no Qt");
#endif
    std::string ext = std::filesystem::path(s.plot).extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    if (ext != ".png" && ext != ".svg") return Usage("--plot takes a .png or .svg file");
  }
  return 0;
}

std::string OneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  return text;
}

std::string Joined(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& t : texts)
    all += (all.empty() ? "" : "; ") + OneLine(t);
  return all;
}

// One case in this process: the girder as `generate` makes it, run as `run`
// runs it, every message kept for the result.
CaseResult RunCase(const GirderRequest& girder, const RunRequest& options) {
  CaseResult result;
  const auto start = std::chrono::steady_clock::now();
  BatchHost host;
  InstallHost(&host);
  host.Hold();
  analysisHooks().Timing = [&result](RunStep step, int n, int bw, double) {
    if (step == RunStep::StageTwoAssembly) {
      result.equations = n;
      result.bandwidth = bw;
    }
  };
  try {
    if (!Generate_Girder(girder) || !ApplyRunOptions(options)) {
      result.failure = Joined(host.Take());
    } else {
      TemporaryFolderGuard folder;
      const RunEnd end = Run_Model(host, options.estimate, 0);
      const std::vector<std::string> texts = host.Take();
      const std::string said = "Eigenvalue of ";
      const auto eigen = std::find_if(texts.begin(), texts.end(),
                                      [&](const std::string& t) { return t.starts_with(said); });
      if (end == RunEnd::Free)
        result.failure = kFreeStructure;
      else if (end == RunEnd::Completed && eigen != texts.end()) {
        result.eigenvalue = eigen->substr(said.size());
        result.check = Check_Verdict(LastRunCheck());
      }
      else
        result.failure = texts.empty() ? "the analysis did not finish" : Joined(texts);
    }
  } catch (const std::exception& e) {
    result.failure = OneLine(e.what());
  }
  if (result.failure.empty() && result.eigenvalue.empty()) result.failure = "no eigenvalue";
  result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return result;
}

std::string Encode(const CaseResult& r) {
  char seconds[32];
  std::snprintf(seconds, sizeof seconds, "%.6f", r.seconds);
  return r.eigenvalue + '\t' + std::to_string(r.equations) + '\t' + std::to_string(r.bandwidth) +
         '\t' + seconds + '\t' + r.check + '\t' + r.failure + '\n';
}

std::optional<CaseResult> Decode(const std::string& line) {
  std::vector<std::string> parts;
  std::size_t from = 0;
  for (std::size_t tab; parts.size() < 5 && (tab = line.find('\t', from)) != std::string::npos;
       from = tab + 1)
    parts.push_back(line.substr(from, tab - from));
  if (parts.size() != 5 || line.empty() || line.back() != '\n') return std::nullopt;
  CaseResult r;
  r.eigenvalue = parts[0];
  r.equations = std::atoi(parts[1].c_str());
  r.bandwidth = std::atoi(parts[2].c_str());
  r.seconds = std::atof(parts[3].c_str());
  r.check = parts[4];
  r.failure = line.substr(from, line.size() - 1 - from);
  return r;
}

void WriteAll(int fd, const std::string& text) {
  for (std::size_t done = 0; done < text.size();) {
    const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return;
    done += static_cast<std::size_t>(n);
  }
}

// A case's process: at most `jobs` at once, each writing its one line into
// its own pipe.
struct Child {
  pid_t pid;
  int fd;
  std::size_t index;
  std::string data;
};

// Runs the given cases, each in a process of its own; the results by case.
// `finished` hears of each case as it ends. A stop signal stops the cases
// running (they cancel at their next checkpoint and remove their folders)
// and starts no more.
void RunCases(const SweepRequest& s, const std::vector<std::string>& values,
              const std::vector<std::size_t>& todo, int jobs,
              std::vector<std::optional<CaseResult>>& results,
              const std::function<void(std::size_t)>& finished) {
  std::vector<Child> running;
  std::size_t next = 0;
  auto tell = [&](std::size_t index) {
    const CaseResult& r = *results[index];
    std::cerr << "velk-batch: case " << index + 1 << '/' << values.size() << ' ' << s.field << '='
              << values[index] << ": "
              << (r.failure.empty() ? r.eigenvalue : "failed: " + r.failure)
              << (Checked(r) ? "" : " (" + r.check + ")") << '\n';
  };
  std::cout.flush();
  std::cerr.flush();
  bool stopping = false;
  while (next < todo.size() || !running.empty()) {
    if (StopSignal() && !stopping) {
      stopping = true;
      next = todo.size();
      for (const Child& c : running)
        ::kill(c.pid, SIGTERM);
    }
    while (running.size() < static_cast<std::size_t>(jobs) && next < todo.size()) {
      const std::size_t index = todo[next++];
      int pipe[2];
      pid_t pid = -1;
      if (::pipe(pipe) == 0) {
        pid = ::fork();
        if (pid < 0) {
          ::close(pipe[0]);
          ::close(pipe[1]);
        }
      }
      if (pid == 0) {
        // The case speaks only through its result.
        ::close(pipe[0]);
        const int null = ::open("/dev/null", O_WRONLY);
        ::dup2(null, STDOUT_FILENO);
        ::dup2(null, STDERR_FILENO);
        GirderRequest girder = s.fixed;
        girder.fields.emplace_back(s.field, values[index]);
        WriteAll(pipe[1], Encode(RunCase(girder, s.run)));
        ::_exit(0);
      }
      if (pid < 0) {
        results[index] = CaseResult{
            {}, 0, 0, 0, std::string("cannot start its process: ") + std::strerror(errno), {}};
        tell(index);
        finished(index);
        continue;
      }
      ::close(pipe[1]);
      running.push_back({pid, pipe[0], index, {}});
    }
    std::vector<pollfd> watch;
    for (const Child& c : running)
      watch.push_back({c.fd, POLLIN, 0});
    if (watch.empty()) continue;
    if (::poll(watch.data(), watch.size(), -1) < 0 && errno != EINTR)
      throw std::runtime_error(std::string("poll: ") + std::strerror(errno));
    for (std::size_t w = watch.size(); w-- > 0;) {
      if (!watch[w].revents) continue;
      Child& c = running[w];
      char buffer[4096];
      const ssize_t n = ::read(c.fd, buffer, sizeof buffer);
      if (n < 0 && errno == EINTR) continue;
      if (n > 0) {
        c.data.append(buffer, static_cast<std::size_t>(n));
        continue;
      }
      ::close(c.fd);
      int status = 0;
      while (::waitpid(c.pid, &status, 0) < 0 && errno == EINTR) {
      }
      std::optional<CaseResult> r = Decode(c.data);
      if (!r) {
        r = CaseResult{};
        r->failure = WIFSIGNALED(status)
                         ? "the case stopped on signal " + std::to_string(WTERMSIG(status))
                         : "the case gave no result";
      }
      if (!stopping) {
        results[c.index] = std::move(r);
        tell(c.index);
        finished(c.index);
      }
      running.erase(running.begin() + static_cast<std::ptrdiff_t>(w));
    }
  }
}

// Why a file could not be written, in plain words.
std::string WriteFailure(const Fault& f) {
  switch (f.number()) {
  case errDiskFull:
    return "the disk is full";
  case errPathNotFound:
    return "its folder does not exist";
  case errPermissionDenied:
    return "permission denied";
  case errBadFileName:
    return "the name is not a file name";
  default:
    return "the system refused it (fault " + std::to_string(f.number()) + ")";
  }
}

// A CSV field, quoted when it holds a comma, a quote or a line end.
std::string CsvField(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (char c : text)
    quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + '"';
}

} // namespace

int Sweep(const std::vector<std::string>& args) {
  SweepRequest s;
  if (const int usage = ParseSweep(args, s)) return usage;
  const std::vector<std::string> values = Values(s.from, s.to, s.step);
  if (values.size() > kMostCases)
    return Usage(s.field + "=" + s.range + ": more than " + std::to_string(kMostCases) + " cases");
  for (const std::string& v : values) {
    GirderRequest girder = s.fixed;
    girder.fields.emplace_back(s.field, v);
    if (const std::string bad = CheckFields(girder); !bad.empty())
      return Usage(s.field + "=" + v + ": " + bad);
  }
  {
    // The options are the same for every case: refused, they are refused once.
    BatchHost host;
    InstallHost(&host);
    const bool applied = ApplyRunOptions(s.run);
    InstallHost(nullptr);
    if (!applied) return Usage("invalid iteration option");
  }
  // Both outputs are tried before the first case: a folder that is not there
  // or a full disk is told at once, not after the study. The rows go to a
  // file beside the study as the cases end, in the order of the field; it
  // takes the study's name when the study ends, stopped or not.
  std::optional<OutFile> csv;
  std::string trying = s.out;
  try {
    csv.emplace(s.out);
    csv->Put(CsvField(s.field) + ",eigenvalue,equations,bandwidth,seconds,failure,check\n");
    csv->Flush();
    trying = s.plot;
    if (!s.plot.empty()) OutFile probe(s.plot); // removed unwritten
  } catch (const Fault& f) {
    std::cerr << "velk-batch: cannot write " << trying << ": " << WriteFailure(f) << '\n';
    return 1;
  }

  std::vector<std::size_t> todo;
  for (std::size_t i = 0; i < values.size(); ++i)
    if (i % static_cast<std::size_t>(s.shards) == static_cast<std::size_t>(s.shard - 1))
      todo.push_back(i);
  const int cores = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
  const int jobs = std::max(1, std::min(s.jobs ? s.jobs : cores, static_cast<int>(todo.size())));
  std::vector<std::optional<CaseResult>> results(values.size());
  bool doubtful = false, writeFailed = false;
  std::vector<std::pair<double, double>> points;
  std::size_t written = 0; // rows of todo out so far
  auto row = [&](std::size_t i) {
    const CaseResult& r = *results[i];
    const bool staged = r.equations > 0;
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%.3f", r.seconds);
    try {
      csv->Put(values[i] + ',' + r.eigenvalue + ',' +
               (staged ? std::to_string(r.equations) : "") + ',' +
               (staged ? std::to_string(r.bandwidth) : "") + ',' + seconds + ',' +
               CsvField(r.failure) + ',' + r.check + '\n');
      csv->Flush();
    } catch (const Fault&) {
      writeFailed = true;
    }
    doubtful = doubtful || !Checked(r);
    if (r.failure.empty()) points.emplace_back(TextToDouble(values[i]), TextToDouble(r.eigenvalue));
  };
  RunCases(s, values, todo, jobs, results, [&](std::size_t) {
    for (; written < todo.size() && results[todo[written]]; ++written)
      row(todo[written]);
  });
  // Stopped: the cases that finished after one that did not are kept too.
  for (std::size_t k = written; k < todo.size(); ++k)
    if (results[todo[k]]) row(todo[k]);
  try {
    if (writeFailed) Raise(errDiskFull);
    csv->Close();
  } catch (const Fault& f) {
    std::cerr << "velk-batch: cannot write " << s.out << ": " << WriteFailure(f) << '\n';
    return 1;
  }
  if (StopSignal()) {
    std::cerr << "velk-batch: stopped; the rows of the cases that finished are in " << s.out
              << '\n';
    return 128 + StopSignal();
  }
  if (points.empty()) {
    std::cerr << "velk-batch: "
              << (todo.empty() ? "this shard holds no case" : "no case found its eigenvalue")
              << '\n';
    return 1;
  }
#ifdef VELK_BATCH_PLOT
  if (!s.plot.empty()) {
    std::string why;
    if (!Plot_Sweep(s.plot, s.field, points, why)) {
      std::cerr << "velk-batch: cannot write " << s.plot << ": " << why << '\n';
      return 1;
    }
  }
#endif
  return doubtful ? 3 : 0;
}

} // namespace velk::batch
