// Runs a program as a user does, in a folder of its own.
#ifndef ZIVKS_EXAMPLES_PROGRAM_TEST_H
#define ZIVKS_EXAMPLES_PROGRAM_TEST_H

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class ProgramTest : public testing::Test {
 protected:
  struct Result {
    int exit_status;
    std::string output;  // of both streams
  };

  void SetUp() override {
    std::string pattern = (std::filesystem::temp_directory_path() / "program-test-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    std::filesystem::current_path(folder_ = pattern);
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  // A shell command, in which $program is the program.
  static Result run(const std::string& command) {
    FILE* const pipe = popen(("exec 2>&1; program='" TESTED_PROGRAM "'; " + command).c_str(), "r");
    std::string output;
    for (int c; (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
  }
  static void expect_failure(const std::string& command, const std::string& message) {
    const Result result = run(command);
    EXPECT_EQ(result.exit_status, 1) << command;
    EXPECT_NE(result.output.find(message), std::string::npos) << command << ": " << result.output;
  }

  static std::string read_bytes(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  static void write_bytes(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
  }

  std::filesystem::path folder_;
};

#endif
