const patience = 3000;

// The pointer shows while it moves and goes when it rests. (In a kiosk show it
// never shows; see screen.css.)
export function hidePointerWhenIdle() {
  const page = document.documentElement;
  let timer;
  const wake = () => {
    page.removeAttribute("data-idle");
    clearTimeout(timer);
    timer = setTimeout(() => page.setAttribute("data-idle", ""), patience);
  };
  addEventListener("pointermove", wake);
  wake();
}
