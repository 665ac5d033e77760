// Draws every sample deck, unlinked; link.sh links them.
import './departures.mjs';
import './shop.mjs';
import './plant.mjs';
