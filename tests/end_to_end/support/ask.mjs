import { request } from "node:http";
import { patience } from "./wait.mjs";

// {status, headers, text, json} of a request to a port, or to a socket file, with whatever headers, Host among them.
export function ask(where, method, path, { headers = {}, body = "", timeout = patience } = {}) {
  return new Promise((resolve, reject) => {
    const asked = request({ ...where, method, path, headers, agent: false, timeout }, (response) => {
      let text = "";
      response.setEncoding("utf8").on("data", (more) => (text += more));
      response.on("error", reject);
      response.on("end", () => {
        const isJson = /json/.test(response.headers["content-type"]) && text !== "";
        const json = isJson ? JSON.parse(text) : undefined;
        resolve({ status: response.statusCode, headers: response.headers, text, json });
      });
    });
    asked.on("timeout", () => asked.destroy(new Error(`${method} ${path}: no answer`)));
    asked.on("error", reject);
    asked.end(body);
  });
}
