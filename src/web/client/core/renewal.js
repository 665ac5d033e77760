// A page that is older than the server's gives way to the newer one.

// It reloads once the new page can be had, and once only: should a cache still answer
// with the old page, the old page goes on as it is.
export async function renewFor(version) {
  if (version === document.documentElement.dataset.version) return;
  if (sessionStorage.getItem("reloaded-for") === version) return;
  const answer = await fetch(location.pathname, { cache: "no-store" }).catch(() => null);
  if (!answer?.ok) return;
  sessionStorage.setItem("reloaded-for", version);
  location.reload();
}
