// While the show is being opened: how far it has come.

const waiting = document.getElementById("waiting");
const [caption, bar, text] = waiting.children;

export function showProgress(progress) {
  waiting.hidden = !progress;
  if (!progress) return;
  caption.textContent = progress.caption;
  text.textContent = progress.text;
  bar.max = Math.max(progress.maximum, 1);
  bar.value = progress.step;
}
