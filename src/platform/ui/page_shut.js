// Runs first in every frame of every page: takes away what can talk without making a request that the gate sees.
for (const name of ['RTCPeerConnection', 'webkitRTCPeerConnection', 'WebTransport']) {
  try {
    Object.defineProperty(window, name, {value: undefined, configurable: false, writable: false});
  } catch (e) {
    // Shut already: a document that was opened anew keeps its window.
  }
}
