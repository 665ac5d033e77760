// The configuration of a hub, block by block. Names in it begin with lumenfold_, so that they are told from
// nginx's own.

#include "app/hub/NginxConfig.h"

#include "basic/Strings.h"

namespace app::hub {

namespace {

using basic::Replace;

bool hasTls(const Hub& hub) { return !hub.certificate.empty(); }

std::string process(const Hub& hub) {
  const std::string text = R"(user www-data;
worker_processes @processes@;
worker_rlimit_nofile @files@;
worker_shutdown_timeout 10s;
pid "@run@/nginx.pid";
error_log stderr warn;

events {
  worker_connections @connections@;
}
)";
  // Processes of the module that share a view may lose each other when a node starts among screens that come
  // back: all its screens then stay silent. One carries more screens than a machine should.
  const std::string processes = hub.isPlain ? "auto" : "1";
  // Beside each connection a file of a cache may be open.
  const std::string numbered = Replace(Replace(text, "@files@", std::to_string(2 * hub.connections + 1024)),
                                       "@connections@", std::to_string(hub.connections));
  return (hub.isPlain ? "" : "load_module /usr/lib/nginx/modules/ngx_nchan_module.so;\n") +
         Replace(Replace(numbered, "@run@", hub.runFolder), "@processes@", processes);
}

std::string caches(const Hub& hub) {
  const std::string text = R"(
  access_log off;
  server_tokens off;
  send_timeout 30s;
  reset_timedout_connection on;
  map_hash_bucket_size 512;
  gzip on;
  gzip_comp_level 2;
  gzip_min_length 1024;
  gzip_types application/json image/svg+xml text/css text/javascript application/javascript;

  client_body_temp_path "@cache@/body";
  proxy_temp_path "@cache@/proxy";
  fastcgi_temp_path "@cache@/unused";
  scgi_temp_path "@cache@/unused";
  uwsgi_temp_path "@cache@/unused";
  proxy_cache_path "@cache@/show" levels=1:2 keys_zone=lumenfold_show:16m max_size=4g inactive=7d use_temp_path=off;
)";
  const std::string checks =
      R"(  proxy_cache_path "@cache@/screens" levels=1:2 keys_zone=lumenfold_screens:16m max_size=1g inactive=7d use_temp_path=off;
)";
  return Replace(text + (hub.screensAreKnown ? checks : ""), "@cache@", hub.cacheFolder);
}

/// What has no port of its own in an Origin has none in a Host; who ends TLS before us may have changed the
/// scheme.
std::string origins(const Hub& hub) {
  std::string text = R"(
  # Pages of other sites must not reach us by a visitor's browser.
  map "$http_origin $http_host" $lumenfold_foreign {
    default 1;
    "~^ " 0;
    "~*^https?://(\S+) \1$" 0;
  }
  map $http_origin $lumenfold_origin {
    default "";
)";
  for (const Address& page : hub.otherPages) text += "    \"" + page.origin() + "\" $http_origin;\n";
  return text + R"(  }
  map $lumenfold_origin $lumenfold_credentials {
    default "true";
    "" "";
  }
  map "$lumenfold_foreign $lumenfold_origin" $lumenfold_refused {
    default 0;
    "1 " 1;
  }
)";
}

std::string theShow(const Hub& hub) {
  const Address& show = hub.show;
  const std::string text = R"(
  upstream lumenfold_show {
    server @host@:@port@;
    keepalive 16;
  }
  proxy_http_version 1.1;
  proxy_set_header Host "@authority@";
  proxy_set_header Origin "";
  proxy_set_header Connection "";
  # We say ourselves who may read; twice is once too often for a browser.
  proxy_hide_header Access-Control-Allow-Origin;
  proxy_hide_header Access-Control-Allow-Credentials;
  proxy_connect_timeout 3s;
)";
  const std::string tls = R"(  proxy_ssl_server_name on;
  proxy_ssl_name "@name@";
  proxy_ssl_verify on;
  proxy_ssl_verify_depth 4;
  proxy_ssl_trusted_certificate /etc/ssl/certs/ca-certificates.crt;
)";
  std::string filled = Replace(text + (show.scheme == "https" ? tls : ""), "@host@", show.host);
  filled = Replace(filled, "@name@", show.host);
  return Replace(Replace(filled, "@port@", std::to_string(show.port)), "@authority@", show.authority());
}

std::string theBus(const Hub& hub) {
  std::string text = "\n  nchan_shared_memory_size 256m;\n";
  if (hub.redis.empty()) return text;
  text += "  upstream lumenfold_bus {\n";
  for (const std::string& server : hub.redis) text += "    nchan_redis_server \"" + server + "\";\n";
  return text + R"(    nchan_redis_connect_timeout 2s;
    nchan_redis_command_timeout 2s;
    nchan_redis_ping_interval 10s;
    nchan_redis_reconnect_delay 200ms;
    nchan_redis_reconnect_delay_max 2s;
  }
)";
}

/// What publishers and readers of a view have in common. The view has a name, as a map with a regular
/// expression that is evaluated later would take $1 away, and the module ends its process over a channel
/// without a name.
std::string channel(const Hub& hub) {
  return "      nchan_channel_group " + hub.channelGroup + ";\n      nchan_channel_id $lumenfold_view;\n" +
         (hub.redis.empty() ? "" : "      nchan_redis_pass lumenfold_bus;\n");
}

std::string withoutRegexSigns(const std::string& token) {
  return Replace(Replace(token, ".", "\\."), "+", "\\+");
}

std::string tls(const Hub& hub) {
  if (!hasTls(hub)) return "";
  const std::string text = R"(    ssl_certificate "@certificate@";
    ssl_certificate_key "@key@";
    ssl_protocols TLSv1.2 TLSv1.3;
    ssl_session_cache shared:lumenfold_tls:10m;
    ssl_session_tickets off;
)";
  return Replace(Replace(text, "@certificate@", hub.certificate), "@key@", hub.certificateKey);
}

/// An `if` within a location would silently take its Redis away; at the server's level it does not.
std::string publishing(const Hub& hub) {
  const bool encrypts = hasTls(hub) && !hub.publishing.isLoopback;
  std::string text;
  if (!hub.publishToken.empty()) {
    text += "\n  map $http_authorization $lumenfold_may_publish {\n    default 0;\n    \"~^Bearer " +
            withoutRegexSigns(hub.publishToken) + "$\" 1;\n  }";
  }
  text += "\n  # The show publishes here.\n  server {\n    listen \"" + hub.publishing.text + "\"" +
          (encrypts ? " ssl" : "") + ";\n" + (encrypts ? tls(hub) : "");
  if (!hub.publishToken.empty()) text += "    if ($lumenfold_may_publish = 0) {\n      return 401;\n    }\n";
  return text + R"(    client_max_body_size 256k;
    client_body_buffer_size 256k;

    location ~ ^/publish/(?<lumenfold_view>[A-Za-z0-9.-]+)$ {
      nchan_publisher http;
)" + channel(hub) +
         R"(      nchan_message_buffer_length 120;
      nchan_message_timeout 2m;
    }
    location = /status {
      nchan_stub_status;
    }
    location = /connections {
      stub_status;
    }
  }
)";
}

/// Of what the show keeps unchanged by its address, and says so.
constexpr std::string_view Lasting = R"(      proxy_pass @show@;
      proxy_cache lumenfold_show;
      proxy_cache_key $uri;
      proxy_cache_lock on;
      proxy_cache_use_stale updating error timeout http_500 http_502 http_503 http_504;
)";

/// Of what is as it is now: one question a second, and the last answer while the show is away. Nobody is
/// content with the last answer and has a new one fetched meanwhile (proxy_cache_background_update): it may
/// be hours old.
constexpr std::string_view Momentary = R"(      proxy_cache lumenfold_show;
      proxy_cache_valid 200 1s;
      proxy_read_timeout 5s;
      proxy_cache_lock on;
      proxy_cache_use_stale updating error timeout http_500 http_502 http_503 http_504;
      proxy_ignore_headers Cache-Control Expires Vary;
)";

/// Ids that are none have ended worker processes of the module before its version 1.3.7.
std::string streams(const Hub& hub) {
  return R"(    location ~ ^/screen/hub/(?<lumenfold_view>[A-Za-z0-9.-]+)$ {
)" + std::string(hub.screensAreKnown ? "      auth_request /screen/check;\n" : "") +
         "      nchan_subscriber eventsource;\n" + channel(hub) +
         R"(      nchan_subscriber_first_message oldest;
      nchan_subscriber_last_message_id $lumenfold_came_back $lumenfold_begins;
      nchan_eventsource_ping_interval 15;
)" + (hub.screensAreKnown ? "      nchan_subscriber_timeout 10m;\n" : "") +
         R"(      add_header Cache-Control no-store always;
    }
)";
}

constexpr std::string_view MessageIds = R"(
  map $http_last_event_id $lumenfold_came_back {
    default "";
    "~^\d{1,10}:\d{1,6}$" $http_last_event_id;
  }
  map $arg_last_event_id $lumenfold_begins {
    default "";
    "~^\d{1,10}:\d{1,6}$" $arg_last_event_id;
  }
)";

constexpr std::string_view DirectStreams = R"(    location = /screen/events {
      proxy_pass @show@;
      proxy_buffering off;
      proxy_read_timeout 1h;
    }
)";

/// The answer is kept by the screen's cookie, so the show must judge by nothing else: others who may look,
/// such as who steers, would let in everybody without one. Headers are inherited by a location that sets
/// none, so each is repeated.
constexpr std::string_view Check = R"(    location = /screen/check {
      proxy_pass @show@/screen/check;
      proxy_pass_request_body off;
      proxy_set_header Content-Length "";
      proxy_set_header Cookie "lumenfold_screen=$cookie_lumenfold_screen";
      proxy_set_header Authorization "";
      proxy_set_header Host "@authority@";
      proxy_set_header Origin "";
      proxy_set_header Connection "";
      proxy_cache lumenfold_screens;
      proxy_cache_key $cookie_lumenfold_screen;
      proxy_cache_valid 204 10s;
      proxy_cache_valid 401 2s;
      proxy_read_timeout 5s;
      proxy_cache_lock on;
      proxy_cache_use_stale updating error timeout http_500 http_502 http_503 http_504;
      proxy_ignore_headers Cache-Control Expires Vary;
    }
)";

constexpr std::string_view Operators =
    R"(    location ~ ^/(api/|remote$|remote/events$|status$|metrics$|readyz$) {
      proxy_pass @show@;
      proxy_buffering off;
      proxy_read_timeout 1h;
    }
)";

std::string pages(const Hub& hub) {
  const std::string known = hub.screensAreKnown ? "      auth_request /screen/check;\n" : "";
  const std::string unknown = hub.screensAreKnown ? "      error_page 401 /screen/enter;\n" : "";
  std::string text = "    location = / {\n" + known + unknown + "      proxy_pass @show@;\n" +
                     "      proxy_cache_key $uri$is_args$args;\n";
  text.append(Momentary).append("    }\n    location ~ ^/slides/[0-9]+$ {\n" + known);
  text.append("      proxy_pass @show@$uri;\n      proxy_cache_key $uri;\n").append(Momentary);
  text.append("    }\n    location /client/ {\n").append(Lasting);
  text.append("    }\n    location /assets/ {\n" + known).append(Lasting);
  text.append("    }\n    location ~ ^/screen/state/[A-Za-z0-9.-]+$ {\n" + known);
  text.append("      proxy_pass @show@$uri;\n");
  // A plain proxy has no streams of its own to go on from, so nothing of it may be old.
  if (!hub.isPlain) text.append("      proxy_cache_key $uri;\n").append(Momentary);
  text += R"(    }
    location ~ ^/screen/(painted|enter|time)$ {
      client_max_body_size 16k;
      proxy_pass @show@;
)";
  // So the show knows that the cookie of a screen needs TLS as well.
  if (hasTls(hub)) {
    const std::string authority = hub.show.authority();
    text += "      proxy_set_header Host \"" + authority + "\";\n      proxy_set_header Origin \"https://" +
            authority + "\";\n      proxy_set_header Connection \"\";\n";
  }
  return text + R"(    }
    location = /healthz {
      default_type application/json;
      return 200 '{"status":"ok"}';
    }
    location / {
      return 404;
    }
)";
}

std::string screens(const Hub& hub) {
  std::string text = "\n  # Screens come here.\n  server {\n";
  for (const Listening& place : hub.listening) {
    text += "    listen \"" + place.text + "\" default_server" + (hasTls(hub) ? " ssl http2" : "") +
            (place.isSocketFile ? "" : " backlog=4096 sndbuf=256k so_keepalive=60s:10s:3") + ";\n";
  }
  text += tls(hub) + R"(    if ($lumenfold_refused) {
      return 403;
    }
)";
  if (!hub.otherPages.empty()) {
    text += R"(    add_header Access-Control-Allow-Origin $lumenfold_origin always;
    add_header Access-Control-Allow-Credentials $lumenfold_credentials always;
    add_header Access-Control-Allow-Headers Content-Type always;
    add_header Access-Control-Expose-Headers Lumenfold-Hub always;
    add_header Vary Origin always;
    if ($request_method = OPTIONS) {
      return 204;
    }
)";
  }
  if (!hub.isPlain) text += "    add_header Lumenfold-Hub \"" + hub.site + "\" always;\n";
  text.append("\n").append(hub.isPlain ? std::string(DirectStreams) : streams(hub)).append(pages(hub));
  if (hub.screensAreKnown) text += Replace(Check, "@authority@", hub.show.authority());
  if (hub.passesOperators) text += Operators;
  return text + "  }\n";
}

/// How the command line begins that made the file; what it says of secrets holds for the file as well.
std::string title(const Hub& hub) {
  std::string text = "# The site " + hub.site + " of a Lumenfold show, made by 'lumenfold hub-config'.\n";
  if (hub.isPlain) return text;
  text +=
      "# The show publishes with --publish " +
      (hub.publishing.isSocketFile ? hub.publishing.text + ":/publish"
                                   : (hasTls(hub) && !hub.publishing.isLoopback ? "https://" : "http://") +
                                         hub.publishing.text + "/publish") +
      "\n";
  if (!hub.publishToken.empty())
    text += "# It holds the token for publishing: nobody but root may read it.\n";
  return text;
}

}  // namespace

std::string nginxConfig(const Hub& hub) {
  std::string text = title(hub) + process(hub) + "\nhttp {" + caches(hub) + origins(hub) + theShow(hub);
  if (!hub.isPlain) text += theBus(hub) + std::string(MessageIds) + publishing(hub);
  text += screens(hub) + "}\n";
  return Replace(text, "@show@", hub.show.scheme + "://lumenfold_show");
}

}  // namespace app::hub
