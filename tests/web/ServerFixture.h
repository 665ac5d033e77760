#pragma once

#include <gtest/gtest.h>

#include <boost/asio/io_context.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "web/Client.h"
#include "web/FakeShow.h"
#include "web/show/Server.h"

namespace web::test {

class ServerFixture : public testing::Test {
 protected:
  ServerFixture() {
    options.port = 0;
    options.token = "s3cret";
    options.onError = [this](const basic::Error& error) { errors.push_back(error.description); };
  }

  Server& server() {
    if (!server_) server_ = std::make_unique<Server>(loop, show, options, hub);
    return *server_;
  }
  Client connect(int receiveBuffer = 0) { return {loop, server().port(), receiveBuffer}; }
  nlohmann::json jsonAt(std::string_view path) { return nlohmann::json::parse(connect().get(path).body); }
  /// The text of shape 2, as the show tells of it.
  static ShapeChange change(int slide, const std::string& text) {
    return {slide, "s1-sh2", "<p id=\"s1-sh2\">" + text + "</p>", "Gate", text};
  }
  Client open(std::string_view path) {
    Client client = connect();
    client.open(path);
    return client;
  }
  /// Tells what a screen has painted; returns the status.
  static int postPainted(Client& client, const std::string& report) {
    client.send("POST /screen/painted HTTP/1.1\r\nHost: localhost\r\nContent-Length: " +
                std::to_string(report.size()) + "\r\n\r\n" + report);
    return client.answer().status;
  }
  bool until(const std::function<bool()>& done) { return runUntil(loop, done); }

  boost::asio::io_context loop;
  FakeShow show;
  Options options;
  PublisherOptions hub;
  std::vector<std::string> errors;
  std::unique_ptr<Server> server_;
};

}  // namespace web::test
