// A page that is older than the server's gives way to the newer one.

const firstPause = 2000;
const longestPause = 300000;

let wanted;

// It reloads once the new page can be had, and once only: a cache between may go on answering with the old page
// for a while, and the old page goes on as it is meanwhile.
export async function renewFor(version) {
  if (version === document.documentElement.dataset.version || version === wanted) return;
  if (sessionStorage.getItem("reloaded-for") === version) return;
  wanted = version;
  for (let pause = firstPause; wanted === version; pause = Math.min(2 * pause, longestPause)) {
    const answer = await fetch(location.pathname + location.search, { cache: "no-store" }).catch(() => null);
    const text = answer?.ok ? await answer.text().catch(() => "") : "";
    if (text.includes(`data-version="${version}"`)) {
      sessionStorage.setItem("reloaded-for", version);
      location.reload();
      return;
    }
    await new Promise((resolve) => setTimeout(resolve, pause * (0.5 + Math.random() / 2)));
  }
}
