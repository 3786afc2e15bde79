// Added to every page during a walk: carries out the driver's orders on the page's own elements.
(() => {
    const token = Math.random().toString(36).slice(2);
    const wait = milliseconds => new Promise(resolve => setTimeout(resolve, milliseconds));
    const url = (path, params) => path + '?' + Object.entries(params)
        .map(([name, value]) => name + '=' + encodeURIComponent(value)).join('&');

    // The first matching element that a user could use: enabled, visible and not covered. Undefined when there is
    // none within ten seconds.
    async function usable(selector) {
        for (let i = 0; i < 100; ++i) {
            const found = [...document.querySelectorAll(selector)].find(one => one.getClientRects().length);
            if (found && !found.disabled) {
                found.scrollIntoView({block: 'nearest'});
                const box = found.getBoundingClientRect();
                const top = document.elementFromPoint(box.x + box.width / 2, box.y + box.height / 2);
                if (found.contains(top) || top?.closest('label')?.control === found) {
                    return found;
                }
            }
            await wait(100);
        }
    }

    // Waits for animations to end, so that a picture shows the final state of the page.
    async function settled() {
        const ends = document.getAnimations().filter(({effect}) => isFinite(effect.getComputedTiming().endTime));
        await Promise.race([Promise.allSettled(ends.map(({finished}) => finished)), wait(1000)]);
        await wait(150);
    }

    async function obey({number, action, selector}) {
        const found = await usable(selector);
        await settled();
        const text = found ? found.innerText.trim() : `'${selector}' cannot be used on '${location.pathname}'.`;
        await fetch(url('/walk/answer', {number, obeyed: found ? 'yes' : 'no', text}));
        if (found && action === 'click') {
            found.click();
        }
    }

    async function listen() {
        for (;;) {
            try {
                const order = await (await fetch(url('/walk/next', {page: location.pathname, token}))).json();
                if (order.number) {
                    await obey(order);
                }
            } catch {
                await wait(500);
            }
        }
    }

    addEventListener('load', () => setTimeout(listen, 100));
})();
