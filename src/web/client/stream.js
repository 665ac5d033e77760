// The event stream with its own way of coming back. Every event that counts has
// a number; a stream starts with the whole picture and then counts up by one.

const firstPause = 500;
const longestPause = 15000;

export function openStream(url, { picture, shapes }) {
  let source;
  let number;
  let failures = 0;
  let longestSilence = 45000;
  let silence;

  function connect() {
    source?.close();
    source = new EventSource(url);
    source.onerror = reconnect;
    source.addEventListener("beat", heard);
    source.addEventListener("picture", (event) => {
      const data = JSON.parse(event.data);
      failures = 0;
      number = Number(event.lastEventId);
      longestSilence = 3 * data.heartbeat;
      heard();
      picture(data);
    });
    source.addEventListener("shapes", (event) => {
      heard();
      if (Number(event.lastEventId) !== ++number) {
        connect(); // something is missing: the new stream begins with everything
        return;
      }
      shapes(JSON.parse(event.data));
    });
    heard();
  }

  // A server that vanished without a word leaves the connection open and silent.
  function heard() {
    clearTimeout(silence);
    silence = setTimeout(reconnect, longestSilence);
  }

  function reconnect() {
    source.close();
    clearTimeout(silence);
    const pause = Math.min(longestPause, firstPause * 2 ** failures++);
    setTimeout(connect, pause * (0.5 + Math.random() / 2));
  }

  connect();
}
