// The data of the report, as C++ has put them into the page. Quantities are in SI units, speeds in
// rpm; `units` holds what turns them into those that are shown, `limits` by what the data are chosen.

export const data = JSON.parse(document.getElementById("data").textContent);

/** rpm in a rad/s. */
export const RPM = data.units.rpm;
