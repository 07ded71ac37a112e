-- Revenue by any column of the schema. A parameter that nobody gives is empty, so the rows are limited only on demand.
select #$[group by]#, sum(l.#$measure#) as revenue
from order_line l
join sales_order o on o.order_id = l.order_id
join customer c on c.customer_id = o.customer_id
join region r on r.region_id = c.region_id
join product p on p.product_id = l.product_id
group by #$[group by]#
order by 2 #$direction##$limit#;
