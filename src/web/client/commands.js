// What a screen may ask of the server, if it was opened with the token:
// http://…/#token=…

export function takeToken() {
  const given = new URLSearchParams(location.hash.slice(1)).get("token");
  if (given) {
    sessionStorage.setItem("token", given);
    history.replaceState(null, "", location.pathname + location.search);
  }
  return sessionStorage.getItem("token");
}

// A function that sends one command after the other, in their order, and tells whether
// it was done. Without a token it does nothing. A command that fails changes nothing on
// the screen.
export function commander(token) {
  let queue = Promise.resolve();
  return (command) => {
    if (!token) return Promise.resolve(false);
    const request = () =>
      fetch(`/api/v1/${command}`, { method: "POST", headers: { Authorization: `Bearer ${token}` } });
    queue = queue
      .then(request)
      .then((answer) => answer.ok)
      .catch(() => false);
    return queue;
  };
}
