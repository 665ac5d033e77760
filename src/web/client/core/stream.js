// The event stream with its own way of coming back. Every event that counts has
// a number; a stream starts with the whole state and then counts up by one.

const firstPause = 500;
const longestPause = 15000;

// `picture` and `shapes` are called with the event's data, its number, and whether it
// follows straight on what came before; `hello` with what the server says first. `before`
// is awaited whenever the stream is about to be asked for.
export function openStream(url, { before, hello, picture, shapes }) {
  let source;
  let number;
  let failures = 0;
  let longestSilence = 45000;
  let silence;

  async function connect() {
    source?.close();
    clearTimeout(silence);
    await before?.();
    source = new EventSource(url);
    source.onerror = reconnect;
    source.addEventListener("beat", heard);
    source.addEventListener("hello", (event) => {
      number = undefined;
      hello(JSON.parse(event.data));
    });
    source.addEventListener("picture", (event) => {
      const data = JSON.parse(event.data);
      failures = 0;
      const isNext = Number(event.lastEventId) === number + 1;
      number = Number(event.lastEventId);
      longestSilence = 3 * data.heartbeat;
      heard();
      picture(data, number, isNext);
    });
    source.addEventListener("shapes", (event) => {
      heard();
      if (Number(event.lastEventId) !== ++number) {
        connect(); // something is missing: the new stream begins with everything
        return;
      }
      shapes(JSON.parse(event.data), number, true);
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
